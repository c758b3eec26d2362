#pragma once

#include <string>

#include "check/Report.h"

namespace orvane::nimbrel::tools {

/// The line of a document that a finding is about, and under it carets that mark the place, if it
/// is known.
///
/// Tabs keep their width, control characters are escaped, and a long line is cut around the place;
/// the time does not depend on its length. Empty when the line is not known, or is blank.
[[nodiscard]] std::string excerpt(const check::Report& report, const check::Diagnostic& finding);

}  // namespace orvane::nimbrel::tools
