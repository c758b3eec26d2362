#pragma once

#include <string>

#include "check/FindingCode.h"

namespace orvane::nimbrel::tools {

/// A code with its level, meaning and examples, over several lines.
[[nodiscard]] std::string explain(const check::CodeDescription& kind);

/// The examples of a code, over several lines.
[[nodiscard]] std::string examplesOf(const check::CodeDescription& kind);

/// All codes, a line each with level and meaning.
[[nodiscard]] std::string listCodes();

}  // namespace orvane::nimbrel::tools
