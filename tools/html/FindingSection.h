#pragma once

#include "check/Report.h"
#include "tools/html/HtmlWriter.h"

namespace orvane::nimbrel::tools {

/// Prints what the findings come to, and their numbers: "Rejected 1 error, 2 notes". `isRejected`:
/// nobody gets the application; `hasRejected`: some do not.
void printVerdict(HtmlWriter& html, const check::Report& report, bool isRejected, bool hasRejected);

/// Prints a link to the error of a line, or to the first one where there is none.
void printErrorLink(HtmlWriter& html, const check::Report& report, std::size_t line);

/// Prints findings beside their lines of the document, the lines with errors first, and what their
/// codes mean. Of very many the worst are printed, and the number of the others.
void printFindings(HtmlWriter& html, const check::Report& report);

}  // namespace orvane::nimbrel::tools
