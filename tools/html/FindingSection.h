#pragma once

#include "check/Report.h"
#include "tools/html/HtmlWriter.h"

namespace orvane::nimbrel::tools {

/// Prints the number of findings of each level: "1 error, 2 notes".
void printFindingCounts(HtmlWriter& html, const check::Report& report);

/// Prints findings beside their lines of the document. Of very many the worst are printed, in the
/// order of the document, and the number of the others.
void printFindings(HtmlWriter& html, const check::Report& report);

}  // namespace orvane::nimbrel::tools
