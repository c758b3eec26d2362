#include "tools/Escape.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace orvane::nimbrel::tools {
namespace {

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

constexpr Range UNPRINTABLE[] = {
    {0x00, 0x1F},     {0x7F, 0x9F},  // controls
    {0x2028, 0x2029},                // line and paragraph separator
    {0x202A, 0x202E},                // embeddings and overrides of direction
    {0x2066, 0x2069},                // isolates
    {0xFEFF, 0xFEFF},                // no-break space without width, a byte order mark at the start
    {0xFFF9, 0xFFFB},                // annotations
};

bool isUnprintable(std::uint32_t character) noexcept {
  return std::any_of(std::begin(UNPRINTABLE), std::end(UNPRINTABLE), [=](const Range& range) {
    return range.first <= character && character <= range.last;
  });
}

constexpr std::uint32_t byteAt(std::string_view text, std::size_t index) noexcept {
  return static_cast<unsigned char>(text[index]);
}

/// Length of the well-formed UTF-8 character at the start of a text, 0 if there is none.
std::size_t decode(std::string_view text, std::uint32_t& character) noexcept {
  struct Form {
    std::uint32_t mask, lead, least;
  };
  static constexpr Form FORMS[] = {
      {0x80, 0x00, 0}, {0xE0, 0xC0, 0x80}, {0xF0, 0xE0, 0x800}, {0xF8, 0xF0, 0x10000}};
  std::size_t length = 0;
  for (const Form& form : FORMS) {
    ++length;
    if ((byteAt(text, 0) & form.mask) != form.lead) {
      continue;
    }
    if (text.size() < length) {
      return 0;
    }
    character = byteAt(text, 0) & ~form.mask;
    for (std::size_t i = 1; i < length; ++i) {
      if ((byteAt(text, i) & 0xC0) != 0x80) {
        return 0;
      }
      character = character << 6 | (byteAt(text, i) & 0x3F);
    }
    const bool surrogate = 0xD800 <= character && character <= 0xDFFF;
    return character < form.least || character > 0x10FFFF || surrogate ? 0 : length;
  }
  return 0;
}

void appendHex(std::string& out, const char* prefix, std::uint32_t value, int digits) {
  out += prefix;
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
    out += "0123456789abcdef"[value >> shift & 0xF];
  }
}

std::string escape(std::string_view text, bool keepLineBreaks) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    std::uint32_t character = 0;
    const std::size_t length = decode(text, character);
    if (length == 0) {
      appendHex(out, "\\x", byteAt(text, 0), 2);
    } else if (!isUnprintable(character) || (keepLineBreaks && character == '\n')) {
      out += text.substr(0, length);
    } else if (character == '\n') {
      out += "\\n";
    } else if (character == '\t') {
      out += "\\t";
    } else {
      appendHex(out, "\\u", character, 4);
    }
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return out;
}

}  // namespace

std::string escape(std::string_view text) {
  return escape(text, false);
}

std::string escapeJson(std::string_view json) {
  return escape(json, true);
}

std::string_view firstCharacters(std::string_view text, std::size_t count) noexcept {
  std::size_t end = 0;
  for (; end < text.size(); ++end) {
    if ((byteAt(text, end) & 0xC0) != 0x80 && count-- == 0) {
      break;
    }
  }
  return text.substr(0, end);
}

std::size_t width(std::string_view text) noexcept {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char byte) { return (byte & '\xC0') != '\x80'; }));
}

}  // namespace orvane::nimbrel::tools
