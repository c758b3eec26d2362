#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "util/Ascii.h"

// Percent escapes, such as "%2F", and those that begin with another character.
namespace orvane::nimbrel::util::internal {

/// The byte that the percent escape at byte `at` stands for; negative when there is no escape.
constexpr int escapedByte(std::string_view text, std::size_t at) noexcept {
  if (text.size() - at < 3 || text[at] != '%') {
    return -1;
  }
  const int high = ascii::hexValue(text[at + 1]);
  const int low = ascii::hexValue(text[at + 2]);
  return high < 0 || low < 0 ? -1 : high * 16 + low;
}

/// Appends `introducer` and two upper-case hex digits.
inline void appendEscape(std::string& text, char introducer, char byte) {
  const unsigned int value = static_cast<unsigned char>(byte);
  text += {introducer, ascii::hexDigit(value >> 4U), ascii::hexDigit(value)};
}

}  // namespace orvane::nimbrel::util::internal
