#pragma once

#include <string>

#include "config/BasicConfig.h"
#include "tools/output/JsonSink.h"

namespace orvane::nimbrel::tools {

/// Tells the record as one object with a key for each field, and the parser's error text. An absent
/// option is null.
void recordToJson(JsonSink& json, config::BasicConfig& record, const std::string& errorText);

}  // namespace orvane::nimbrel::tools
