#pragma once

#include <string>

#include "config/BasicConfig.h"

namespace orvane::nimbrel::tools {

/// Prints the record for a person: what the document set or changed, and the parser's error text.
void printRecordText(config::BasicConfig& record, const std::string& errorText, bool colour);

}  // namespace orvane::nimbrel::tools
