#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "config/BasicConfig.h"

namespace orvane::nimbrel::tools {

/// JSON whose keys keep the order in which they were added.
using Json = nlohmann::ordered_json;

/// The record as one object with a key for each field, and the parser's error text. An absent
/// option is null.
[[nodiscard]] Json recordToJson(config::BasicConfig& record, const std::string& errorText);

/// The text of a JSON value, indented and ended by a line break. What is no UTF-8 is replaced, what
/// a terminal would act on is escaped.
[[nodiscard]] std::string printJson(const Json& json);

}  // namespace orvane::nimbrel::tools
