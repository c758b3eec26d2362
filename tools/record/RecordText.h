#pragma once

#include <string>

#include "config/BasicConfig.h"

namespace orvane::nimbrel::tools {

/// The record for a person: what the document set or changed, and the parser's error text.
[[nodiscard]] std::string recordToText(config::BasicConfig& record, const std::string& errorText,
                                       bool colour);

}  // namespace orvane::nimbrel::tools
