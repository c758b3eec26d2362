#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace orvane::nimbrel::tools {

/// JSON whose keys keep the order in which they were added.
using Json = nlohmann::ordered_json;

/// Prints a JSON value as `JsonWriter` does.
void printJson(const Json& json);

}  // namespace orvane::nimbrel::tools
