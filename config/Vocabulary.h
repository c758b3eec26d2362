#pragma once

#include "config/Report.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::config::detail {

/// Tells of the attributes of an element that nobody reads, and of unknown directions on it and, in
/// an element of text, below it. For parsers with an observer only.
void examineAttributes(const util::XmlNode& element, Observation& observation);

/// Tells why a document has the wrong root, which may be null.
void reportForeignRoot(const util::XmlNode* root, Observation& observation);

/// Tells that no handler is for a child of the root.
void reportUnknownElement(const util::XmlNode& element, Observation& observation);

}  // namespace orvane::nimbrel::config::detail
