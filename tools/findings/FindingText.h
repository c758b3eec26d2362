#pragma once

#include <string>

#include "config/FindingKind.h"
#include "tools/findings/Check.h"

namespace orvane::nimbrel::tools {

/// How many findings there are of each level.
struct FindingCounts {
  std::size_t errors = 0;
  std::size_t warnings = 0;
  std::size_t notes = 0;

  void add(const CheckedDocument& document);
};

/// A finding in words that need no context: what it is about, why, and what was meant. Strangers'
/// text is escaped, and cut where it is long.
[[nodiscard]] std::string sentenceOf(const CheckedFinding& finding);

/// How a person sees findings.
struct FindingStyle {
  bool source = false;  ///< with the lines of the document
  bool colour = false;
};

/// The findings of a document as compilers print theirs: "FILE:LINE: level: sentence [code]", a
/// line each. Under it, as `style` wants, the line of the document and carets under the place.
[[nodiscard]] std::string findingsToText(const CheckedDocument& document, FindingStyle style);

/// "1 error, 2 notes", or "no findings"; a line.
[[nodiscard]] std::string countsToText(const FindingCounts& counts);

/// A code with its level, meaning and examples, over several lines.
[[nodiscard]] std::string explain(const config::FindingKind& kind);

/// The examples of a code, over several lines.
[[nodiscard]] std::string examplesOf(const config::FindingKind& kind);

/// All codes, a line each with level and meaning.
[[nodiscard]] std::string listCodes();

}  // namespace orvane::nimbrel::tools
