#pragma once

#include <vector>

#include "tools/findings/Check.h"
#include "tools/findings/Json.h"

namespace orvane::nimbrel::tools {

/// The findings of documents as a log in the Static Analysis Results Interchange Format, 2.1.0, for
/// tools of code review. `complete` is false when some document could not be read.
[[nodiscard]] Json findingsToSarif(const std::vector<CheckedDocument>& documents, bool complete);

}  // namespace orvane::nimbrel::tools
