#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orvane::nimbrel::util::internal {

/// A set of the character classes of RFC 3987 and RFC 3986, one bit each.
using IRICharacters = std::uint8_t;

constexpr IRICharacters IRI_ALPHA = 0x01;
constexpr IRICharacters IRI_DIGIT = 0x02;
constexpr IRICharacters IRI_UNRESERVED = 0x08;  ///< the ASCII part of it
constexpr IRICharacters IRI_SUB_DELIMS = 0x10;
constexpr IRICharacters IRI_SCHEME = 0x20;  ///< behind the first letter
constexpr IRICharacters IRI_PATH = 0x40;    ///< "/", and ":" and "@" of `pchar`
constexpr IRICharacters IRI_COLON = 0x80;

constexpr std::array<IRICharacters, 256> makeIRICharacterTable() {
  std::array<IRICharacters, 256> table{};
  constexpr struct {
    std::string_view characters;
    IRICharacters classes;
  } rows[] = {
      {"0123456789", IRI_DIGIT | IRI_UNRESERVED | IRI_SCHEME},
      {"ABCDEFGHIJKLMNOPQRSTUVWXYZ", IRI_ALPHA | IRI_UNRESERVED | IRI_SCHEME},
      {"abcdefghijklmnopqrstuvwxyz", IRI_ALPHA | IRI_UNRESERVED | IRI_SCHEME},
      {"-._~", IRI_UNRESERVED},
      {"!$&'()*+,;=", IRI_SUB_DELIMS},
      {"+-.", IRI_SCHEME},
      {":@/", IRI_PATH},
      {":", IRI_COLON},
  };
  for (const auto& row : rows) {
    for (const char character : row.characters) {
      IRICharacters& classes = table[static_cast<unsigned char>(character)];
      classes = static_cast<IRICharacters>(classes | row.classes);
    }
  }
  return table;
}

inline constexpr std::array<IRICharacters, 256> IRI_CHARACTER_TABLE = makeIRICharacterTable();

/// Whether a byte belongs to one of the classes; never for bytes that are not ASCII.
constexpr bool isIRICharacter(char byte, IRICharacters classes) noexcept {
  return (IRI_CHARACTER_TABLE[static_cast<unsigned char>(byte)] & classes) != 0;
}

/// RFC 3987 `ucschar`.
constexpr bool isUcsChar(char32_t codePoint) noexcept {
  if (codePoint < 0x10000) {
    return (codePoint >= 0xA0 && codePoint <= 0xD7FF) ||
           (codePoint >= 0xF900 && codePoint <= 0xFDCF) ||
           (codePoint >= 0xFDF0 && codePoint <= 0xFFEF);
  }
  // From each plane but the last two private ones; tags (U+E0000 to U+E0FFF) are left out.
  return codePoint <= 0xEFFFD && (codePoint & 0xFFFF) <= 0xFFFD &&
         (codePoint < 0xE0000 || codePoint >= 0xE1000);
}

/// RFC 3987 `iprivate`.
constexpr bool isIPrivate(char32_t codePoint) noexcept {
  return (codePoint >= 0xE000 && codePoint <= 0xF8FF) ||
         (codePoint >= 0xF0000 && codePoint <= 0xFFFFD) ||
         (codePoint >= 0x100000 && codePoint <= 0x10FFFD);
}

}  // namespace orvane::nimbrel::util::internal
