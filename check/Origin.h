#pragma once

#include <string>

namespace orvane::nimbrel::check {

/// What is wrong, and what was meant where that is certain.
struct Advice {
  std::string sentence;  ///< without its end
  std::string suggestion;
  /// Whether nothing else can be meant, so that it may be written without asking.
  bool isCertain = false;
};

/// What is wrong with an origin that the parser ignores.
[[nodiscard]] Advice adviceOnOrigin(const std::string& origin);

}  // namespace orvane::nimbrel::check
