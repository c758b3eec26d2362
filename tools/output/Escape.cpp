#include "tools/output/Escape.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "util/Ascii.h"
#include "util/Utf8.h"

namespace orvane::nimbrel::tools {
namespace {

using util::internal::decodeUtf8;
using util::internal::isUtf8Trail;
using util::internal::NOT_UTF8;

struct Range {
  char32_t first;
  char32_t last;
};

// What stays in ASCII stands in PLAIN.
constexpr Range UNPRINTABLE[] = {
    {0x80, 0x9F},      // controls
    {0x061C, 0x061C},  // Arabic letter mark
    {0x200E, 0x200F},  // left-to-right and right-to-left mark
    {0x2028, 0x2029},  // line and paragraph separator
    {0x202A, 0x202E},  // embeddings and overrides of direction
    {0x2066, 0x2069},  // isolates
    {0xFEFF, 0xFEFF},  // no-break space without width, a byte order mark at the start
    {0xFFF9, 0xFFFB},  // annotations
    {0xFFFE, 0xFFFF},  // no characters
};

/// The characters of ASCII that stay as they are.
constexpr std::array<bool, 256> plainCharacters(bool withQuotes) {
  std::array<bool, 256> plain = {};
  for (unsigned int c = 0x20; c < 0x7F; ++c) {
    plain[c] = withQuotes || (c != '"' && c != '\\');
  }
  return plain;
}

constexpr std::array<bool, 256> PLAIN = plainCharacters(false);
constexpr std::array<bool, 256> PLAIN_OR_QUOTE = plainCharacters(true);

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

}  // namespace

bool isUnprintable(char32_t character) noexcept {
  return std::any_of(std::begin(UNPRINTABLE), std::end(UNPRINTABLE), [=](const Range& range) {
    return range.first <= character && character <= range.last;
  });
}

void appendEscaped(std::string& out, std::string_view text, Encoding encoding) {
  append(out, text, encoding, PLAIN);
}

std::string escape(std::string_view text) {
  std::string out;
  append(out, text, Encoding::TEXT, PLAIN);
  return out;
}

std::string escapeUnprintable(std::string_view line) {
  std::string out;
  append(out, line, Encoding::TEXT, PLAIN_OR_QUOTE);
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

}  // namespace orvane::nimbrel::tools
