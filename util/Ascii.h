#pragma once

#include <string>

// Characters of ASCII, whatever the locale. Not part of the interface.
namespace orvane::nimbrel::util::ascii {

constexpr bool isDigit(char c) noexcept {
  return c >= '0' && c <= '9';
}

constexpr bool isLowerCase(char c) noexcept {
  return c >= 'a' && c <= 'z';
}

constexpr bool isLetter(char c) noexcept {
  return isLowerCase(c) || (c >= 'A' && c <= 'Z');
}

constexpr bool isLetterOrDigit(char c) noexcept {
  return isLetter(c) || isDigit(c);
}

/// The six characters that the C locale's `isspace` knows.
constexpr bool isSpace(char c) noexcept {
  // Most bytes lie above all white space and need no second look.
  const auto byte = static_cast<unsigned char>(c);
  return byte <= ' ' && (byte == ' ' || (byte >= '\t' && byte <= '\r'));
}

/// The four of them that XML knows.
constexpr bool isXmlSpace(char c) noexcept {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

constexpr char lowerCase(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline std::string lowerCased(std::string text) {
  for (char& c : text) {
    c = lowerCase(c);
  }
  return text;
}

/// The value of a hexadecimal digit of either case; negative for any other character.
constexpr int hexValue(char c) noexcept {
  const char lower = lowerCase(c);
  return isDigit(c) ? c - '0' : lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

constexpr bool isHexDigit(char c) noexcept {
  return hexValue(c) >= 0;
}

/// Upper case, as in percent escapes.
constexpr char hexDigit(unsigned int value) noexcept {
  return "0123456789ABCDEF"[value & 0xFU];
}

}  // namespace orvane::nimbrel::util::ascii
