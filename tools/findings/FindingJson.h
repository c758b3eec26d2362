#pragma once

#include <vector>

#include "tools/findings/Check.h"
#include "tools/findings/FindingText.h"
#include "tools/findings/Json.h"

namespace orvane::nimbrel::tools {

/// The findings of documents as one object; what is absent or not known is null.
[[nodiscard]] Json findingsToJson(const std::vector<CheckedDocument>& documents,
                                  const FindingCounts& counts);

}  // namespace orvane::nimbrel::tools
