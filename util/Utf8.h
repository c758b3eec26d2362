#pragma once

#include <cstddef>
#include <string_view>

namespace orvane::nimbrel::util::internal {

/// What `decodeUtf8` returns for bytes that are no UTF-8.
constexpr char32_t NOT_UTF8 = 0xFFFFFFFF;

/// The most bytes that a character takes.
constexpr std::size_t MAX_UTF8_LENGTH = 4;

/// Whether a byte continues a character instead of beginning one.
constexpr bool isUtf8Trail(char byte) noexcept {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// The code point at byte `at`, which lies inside the text; `at` moves behind it.
///
/// Strict: overlong forms, surrogates, values above U+10FFFF and cut-off characters are
/// `NOT_UTF8`. Then `at` moves by a byte or more, but never over a byte that may begin a character.
constexpr char32_t decodeUtf8(std::string_view text, std::size_t& at) noexcept {
  const char32_t lead = static_cast<unsigned char>(text[at++]);
  if (lead < 0x80) {
    return lead;
  }
  if (lead < 0xC0 || lead > 0xF7) {
    return NOT_UTF8;
  }
  const std::size_t trails = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
  char32_t codePoint = lead & (0x3FU >> trails);
  for (std::size_t i = 0; i < trails; ++i) {
    if (at == text.size() || !isUtf8Trail(text[at])) {
      return NOT_UTF8;
    }
    codePoint = codePoint << 6 | (static_cast<unsigned char>(text[at++]) & 0x3FU);
  }
  constexpr char32_t FIRST[] = {0, 0x80, 0x800, 0x10000};
  const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
  return codePoint < FIRST[trails] || surrogate || codePoint > 0x10FFFF ? NOT_UTF8 : codePoint;
}

}  // namespace orvane::nimbrel::util::internal
