#pragma once

#include <memory>
#include <vector>

#include "config/Report.h"
#include "util/XmlNode.h"

// What an author learns of the choice among elements in several languages.
namespace orvane::nimbrel::config::detail {

/// Tells that an element came after the one that counts. Both may be null.
void reportLater(const util::XmlNode* element, Observation* observation);

/// Tells of the children of the root that are in none of the user's languages: those that are not
/// among `heard`.
void reportUnheard(const util::XmlNode& root,
                   const std::vector<std::shared_ptr<util::XmlNode>>& heard,
                   Observation& observation);

}  // namespace orvane::nimbrel::config::detail
