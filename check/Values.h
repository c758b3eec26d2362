#pragma once

#include <optional>
#include <string>

#include "check/Origin.h"
#include "config/ElementDescription.h"

namespace orvane::nimbrel::check {

/// What is odd about a value that the parser does not judge, in a whole sentence; nothing when it
/// looks right.
[[nodiscard]] std::optional<Advice> adviceOnValue(config::ValueKind kind, const std::string& value);

}  // namespace orvane::nimbrel::check
