#include "tools/findings/TagPlace.h"

#include <algorithm>
#include <vector>

#include "tools/Escape.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::string_view SPACE = " \t\r";
constexpr std::string_view AFTER_NAME = " \t\r/>=<";

/// Without its prefix: documents have prefixes of their own.
std::string_view localName(std::string_view name) noexcept {
  return name.substr(name.rfind(':') + 1);
}

std::size_t orEnd(std::size_t at, std::string_view line) noexcept {
  return std::min(at, line.size());
}

/// What a line says of one element.
struct Tag {
  Place name;
  std::optional<Place> attribute;  ///< the one that was looked for
  std::string_view value;          ///< its text between the quotes
};

/// Looks for an attribute from `at` on, where the name of an element has ended.
void findAttribute(std::string_view line, std::size_t at, std::string_view wanted, Tag& tag) {
  while (true) {
    at = orEnd(line.find_first_not_of(SPACE, at), line);
    const std::size_t nameEnd = orEnd(line.find_first_of(AFTER_NAME, at), line);
    const std::size_t equals = orEnd(line.find_first_not_of(SPACE, nameEnd), line);
    if (nameEnd == at || equals == line.size() || line[equals] != '=') {
      return;  // the end of the tag
    }
    const std::size_t quote = orEnd(line.find_first_not_of(SPACE, equals + 1), line);
    if (quote == line.size() || (line[quote] != '"' && line[quote] != '\'')) {
      return;
    }
    const std::size_t end = orEnd(line.find(line[quote], quote + 1), line);
    if (localName(line.substr(at, nameEnd - at)) == wanted) {
      tag.attribute = Place{at, orEnd(end + 1, line)};
      tag.value = line.substr(quote + 1, end - quote - 1);
      return;
    }
    at = orEnd(end + 1, line);
  }
}

std::vector<Tag> tagsOf(std::string_view line, const CheckedFinding& finding) {
  const std::string_view wanted = localName(finding.element);
  std::vector<Tag> tags;
  for (std::size_t at = line.find('<'); at != std::string_view::npos; at = line.find('<', at + 1)) {
    const std::size_t end = orEnd(line.find_first_of(AFTER_NAME, at + 1), line);
    if (localName(line.substr(at + 1, end - at - 1)) == wanted) {
      tags.push_back({{at, end}, {}, {}});
      if (!finding.attribute.empty()) {
        findAttribute(line, end, localName(finding.attribute), tags.back());
      }
    }
  }
  return tags;
}

bool agrees(const Tag& tag, const CheckedFinding& finding) {
  return tag.attribute.has_value() == finding.value.has_value() &&
         (!finding.value || tag.value == *finding.value);
}

std::optional<Place> placeOfColumn(std::string_view line, std::uint32_t column) {
  const std::size_t begin = firstCharacters(line, column - 1).size();
  const std::size_t end = firstCharacters(line, column).size();
  // The end of the line is a place too: there something is missing.
  const bool known = begin < end || width(line) + 1 == column;
  return known ? std::optional(Place{begin, end}) : std::nullopt;
}

}  // namespace

std::optional<Place> placeIn(std::string_view line, const CheckedFinding& finding) {
  if (finding.column != 0) {
    return placeOfColumn(line, finding.column);
  }
  if (finding.element.empty()) {
    return std::nullopt;
  }
  std::vector<Tag> tags = tagsOf(line, finding);
  if (tags.size() > 1 && !finding.attribute.empty()) {
    tags.erase(std::remove_if(tags.begin(), tags.end(),
                              [&](const Tag& tag) { return !agrees(tag, finding); }),
               tags.end());
  }
  if (tags.size() != 1) {
    return std::nullopt;
  }
  return tags.front().attribute.value_or(tags.front().name);
}

}  // namespace orvane::nimbrel::tools
