#pragma once

#include <string>

#include "tools/findings/Check.h"
#include "tools/findings/SourceText.h"

namespace orvane::nimbrel::tools {

/// The line of a document that a finding is about, and under it carets that mark the place: the
/// attribute with its value, or else the name of the element.
///
/// The place is known by the names alone; where the line has several such elements there are no
/// carets. Tabs keep their width, control characters are escaped, and a long line is cut around the
/// place. Empty when the line is not known, is blank, or is too long to look for the place.
[[nodiscard]] std::string excerpt(const SourceText& source, const CheckedFinding& finding);

}  // namespace orvane::nimbrel::tools
