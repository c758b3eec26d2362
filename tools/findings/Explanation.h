#pragma once

#include <string>

#include "check/FindingCode.h"
#include "check/Wording.h"

namespace orvane::nimbrel::tools {

/// A finding in words that need no context: what it is about, why, and what was meant. The
/// document's text is escaped, and cut where it is long.
[[nodiscard]] std::string sentenceOf(const check::Wording& wording);

/// A code with its level, meaning and examples, over several lines.
[[nodiscard]] std::string explain(const check::CodeDescription& kind);

/// The examples of a code, over several lines.
[[nodiscard]] std::string examplesOf(const check::CodeDescription& kind);

/// All codes, a line each with level and meaning.
[[nodiscard]] std::string listCodes();

}  // namespace orvane::nimbrel::tools
