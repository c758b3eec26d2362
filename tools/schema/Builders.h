#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/schema/Pattern.h"

// Short names for patterns.
namespace orvane::nimbrel::tools {

using Patterns = std::vector<Pattern>;

inline Pattern text() {
  return {Pattern::Kind::TEXT};
}
inline Pattern reference(std::string_view name) {
  return {Pattern::Kind::REFERENCE, std::string(name)};
}
inline Pattern optional(Pattern part) {
  return {Pattern::Kind::OPTIONAL, {}, {std::move(part)}};
}
inline Pattern repeated(Pattern part) {
  return {Pattern::Kind::REPEATED, {}, {std::move(part)}};
}
inline Pattern choice(Patterns parts) {
  return parts.size() == 1 ? parts.front() : Pattern{Pattern::Kind::CHOICE, {}, std::move(parts)};
}
inline Pattern attribute(std::string name, Pattern value) {
  return {Pattern::Kind::ATTRIBUTE, std::move(name), {std::move(value)}};
}
inline Pattern anyAttribute(std::vector<std::string> excepted) {
  return repeated({Pattern::Kind::ATTRIBUTE, "*", {text()}, std::move(excepted)});
}
inline Pattern words(const std::vector<std::string_view>& all) {
  Patterns values;
  for (const std::string_view word : all) {
    values.push_back({Pattern::Kind::VALUE, std::string(word)});
  }
  return choice(std::move(values));
}

/// Attributes of which each may be there or not. Not as a group: of that libxml2 would follow each
/// combination through all that stands behind it.
inline Pattern together(Patterns attributes) {
  return attributes.size() == 1 ? attributes.front()
                                : Pattern{Pattern::Kind::INTERLEAVE, {}, std::move(attributes)};
}

}  // namespace orvane::nimbrel::tools
