#include "tools/output/Escape.h"

#include <unicode/uchar.h>

#include <array>
#include <cstdint>

#include "util/Ascii.h"
#include "util/Utf8.h"

namespace orvane::nimbrel::tools {
namespace {

using util::internal::decodeUtf8;
using util::internal::isUtf8Trail;
using util::internal::NOT_UTF8;

/// The characters of ASCII that stay as they are.
constexpr std::array<bool, 256> plainCharacters(bool withQuotes) {
  std::array<bool, 256> plain = {};
  for (unsigned int c = 0x20; c < 0x7F; ++c) {
    plain[c] = withQuotes || (c != '"' && c != '\\');
  }
  return plain;
}

constexpr std::array<bool, 256> PLAIN_BYTE = plainCharacters(false);
constexpr std::array<bool, 256> PLAIN_BYTE_OR_QUOTE = plainCharacters(true);

void appendHex(std::string& out, const char* prefix, char32_t value, int digits) {
  out += prefix;
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
    out += util::ascii::lowerCase(util::ascii::hexDigit(value >> shift));
  }
}

void appendCharacter(std::string& out, char32_t character) {
  constexpr std::string_view NAMED = "\"\"\\\\\bb\ff\nn\rr\tt";  // a character, then its letter
  for (std::size_t i = 0; i < NAMED.size(); i += 2) {
    if (static_cast<unsigned char>(NAMED[i]) == character) {
      out += '\\';
      out += NAMED[i + 1];
      return;
    }
  }
  if (character > 0xFFFF) {  // as two of UTF-16, as in JSON
    appendHex(out, "\\u", 0xD7C0 + (character >> 10), 4);
    character = 0xDC00 + (character & 0x3FF);
  }
  appendHex(out, "\\u", character, 4);
}

// A person is to see a character that no terminal shows, such as a soft hyphen; a program is not.
bool isInvisible(char32_t character) noexcept {
  return u_hasBinaryProperty(static_cast<UChar32>(character), UCHAR_DEFAULT_IGNORABLE_CODE_POINT) !=
         0;
}

void append(std::string& out, std::string_view text, Encoding encoding,
            const std::array<bool, 256>& plain) {
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t begin = at;
    while (at < text.size() && plain[static_cast<unsigned char>(text[at])]) {
      ++at;
    }
    out.append(text, begin, at - begin);
    if (at == text.size()) {
      return;
    }
    const std::size_t from = at;
    const char32_t character = decodeUtf8(text, at);
    if (character == NOT_UTF8) {
      for (std::size_t i = from; encoding == Encoding::TEXT && i < at; ++i) {
        appendHex(out, "\\x", static_cast<unsigned char>(text[i]), 2);
      }
      out += encoding == Encoding::JSON ? "\xEF\xBF\xBD" : "";
    } else if (character < 0x80 || isUnprintable(character) ||
               (encoding == Encoding::TEXT && isInvisible(character))) {
      appendCharacter(out, character);
    } else {
      out.append(text, from, at - from);
    }
  }
}

std::size_t widthOf(char32_t character) noexcept {
  if (character < 0x80 || character == NOT_UTF8) {
    return 1;
  }
  const auto codePoint = static_cast<UChar32>(character);
  if ((U_GET_GC_MASK(codePoint) & (U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK)) != 0) {
    return 0;
  }
  const int kind = u_getIntPropertyValue(codePoint, UCHAR_EAST_ASIAN_WIDTH);
  return kind == U_EA_WIDE || kind == U_EA_FULLWIDTH ? 2 : 1;
}

}  // namespace

bool isUnprintable(char32_t character) noexcept {
  const auto codePoint = static_cast<UChar32>(character);
  const std::uint32_t kind =
      U_GET_GC_MASK(codePoint) & (U_GC_CC_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK);
  return character >= 0x80 &&
         (kind != 0 || u_hasBinaryProperty(codePoint, UCHAR_BIDI_CONTROL) != 0 ||
          character == 0xFEFF || (character >= 0xFFF9 && character <= 0xFFFB) ||  // annotations
          (character & 0xFFFFFFFEU) == 0xFFFE);                                   // no characters
}

void appendEscaped(std::string& out, std::string_view text, Encoding encoding) {
  append(out, text, encoding, PLAIN_BYTE);
}

std::string escape(std::string_view text) {
  std::string out;
  append(out, text, Encoding::TEXT, PLAIN_BYTE);
  return out;
}

std::string escapeUnprintable(std::string_view line) {
  std::string out;
  append(out, line, Encoding::TEXT, PLAIN_BYTE_OR_QUOTE);
  return out;
}

std::string_view firstCharacters(std::string_view text, std::size_t count) noexcept {
  std::size_t end = 0;
  for (; end < text.size(); ++end) {
    if (!isUtf8Trail(text[end]) && count-- == 0) {
      break;
    }
  }
  return text.substr(0, end);
}

std::size_t width(std::string_view text) noexcept {
  std::size_t columns = 0;
  for (std::size_t at = 0; at < text.size();) {
    columns += widthOf(decodeUtf8(text, at));
  }
  return columns;
}

std::string_view firstColumns(std::string_view text, std::size_t count) noexcept {
  std::size_t end = 0;
  while (end < text.size()) {
    std::size_t next = end;
    const std::size_t columns = widthOf(decodeUtf8(text, next));
    if (columns > count) {
      break;
    }
    count -= columns;
    end = next;
  }
  return text.substr(0, end);
}

}  // namespace orvane::nimbrel::tools
