#include "tools/findings/LineHashes.h"

#include <charconv>
#include <cstdint>
#include <iterator>
#include <map>

#include "util/Utf8.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::uint64_t FACTOR = 37;
constexpr std::size_t BLOCK = 100;  // code units from the beginning of a line
constexpr char16_t END_OF_FILE = 0xFFFF;

/// The UTF-16 code units that count: without blanks, with "\n" for each end of a line.
std::u16string unitsOf(std::string_view text) {
  std::u16string units;
  bool isBehindReturn = false;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t c = util::internal::decodeUtf8(text, at);
    const bool counts = c != ' ' && c != '\t' && !(isBehindReturn && c == '\n');
    isBehindReturn = c == '\r';
    if (counts && c > 0xFFFF && c <= 0x10FFFF) {
      units += static_cast<char16_t>(0xD7C0U + (c >> 10U));
      units += static_cast<char16_t>(0xDC00U + (c & 0x3FFU));
    } else if (counts) {
      units += c == '\r' ? u'\n' : c > 0xFFFF ? u'\xFFFD' : static_cast<char16_t>(c);
    }
  }
  units += END_OF_FILE;
  return units;
}

}  // namespace

LineHashes::LineHashes(std::string_view text) {
  const std::u16string units = unitsOf(text);
  const auto unitAt = [&](std::size_t at) { return at < units.size() ? units[at] : u'\0'; };
  std::uint64_t hash = 0;
  std::uint64_t oldest = 1;  // what the first unit of a block counts in the next one
  for (std::size_t i = 0; i < BLOCK; ++i) {
    hash = hash * FACTOR + unitAt(i);
    oldest *= FACTOR;
  }
  std::map<std::uint64_t, std::size_t> counts;
  for (std::size_t at = 0; at < units.size(); ++at) {
    if (at == 0 || units[at - 1] == u'\n') {
      char digits[16];
      const auto end = std::to_chars(std::begin(digits), std::end(digits), hash, 16).ptr;
      hashes_.push_back(std::string(std::begin(digits), end) + ':' +
                        std::to_string(++counts[hash]));
    }
    hash = hash * FACTOR + unitAt(at + BLOCK) - oldest * units[at];
  }
}

std::string LineHashes::of(std::size_t line) const {
  return line == 0 || line > hashes_.size() ? std::string() : hashes_[line - 1];
}

}  // namespace orvane::nimbrel::tools
