#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace orvane::nimbrel::bench {

/// A kind of document that can be made in any size.
struct Shape {
  const char* name;
  std::string (*make)(std::size_t count);  ///< `count`: what grows; see the shapes themselves
  bool grows;                              ///< whether it is made in sizes; else `count` is ignored
  /// Beyond this size the hand-written walk, which searches its lists, would take minutes.
  std::size_t handWrittenLimit;
};

/// All shapes, in the order of the table.
[[nodiscard]] const std::vector<Shape>& shapes();

/// The shape of that name; null when there is none.
[[nodiscard]] const Shape* findShape(const std::string& name);

/// The locales of the user agent: three for most shapes, a hundred for names in many languages.
[[nodiscard]] std::vector<std::string> localesFor(const Shape& shape);

}  // namespace orvane::nimbrel::bench
