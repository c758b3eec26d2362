#pragma once

#include "tools/record/RecordFields.h"

namespace orvane::nimbrel::tools {

/// Prints the record for a person: what the document set or changed, and the parser's error text.
void printRecordText(const ShownDocument& document, bool colour);

}  // namespace orvane::nimbrel::tools
