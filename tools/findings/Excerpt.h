#pragma once

#include <cstddef>
#include <string>

#include "check/Report.h"

namespace orvane::nimbrel::tools {

/// What an excerpt looks like.
struct ExcerptStyle {
  std::size_t width = 100;  ///< columns of the document's line that are shown
  const char* gutter = "";  ///< control sequences: before the gutter, before the carets ...
  const char* carets = "";
  const char* plain = "";  ///< ... and after both
};

/// The line of a document that a finding is about, behind its number, and under it carets that mark
/// the place, if it is known.
///
/// Tabs keep their width, control characters are escaped, and a long line is cut around the place;
/// the time does not depend on its length. Empty when the line is not known, or is blank.
[[nodiscard]] std::string excerpt(const check::Report& report, const check::Diagnostic& finding,
                                  const ExcerptStyle& style);

/// The same line in parts, without carets: what stands before the place, in it and behind it. All
/// are empty where there is no excerpt. `width` is how many columns of the line are shown.
struct ExcerptParts {
  std::string before;
  std::string place;
  std::string behind;
};
[[nodiscard]] ExcerptParts excerptParts(const check::Report& report,
                                        const check::Diagnostic& finding, std::size_t width = 100);

}  // namespace orvane::nimbrel::tools
