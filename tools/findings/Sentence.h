#pragma once

#include <string>

#include "check/Wording.h"

namespace orvane::nimbrel::tools {

/// A finding in words that need no context: what it is about, why, and what was meant. The
/// document's text is escaped, and cut where it is long.
[[nodiscard]] std::string sentenceOf(const check::Wording& wording);

}  // namespace orvane::nimbrel::tools
