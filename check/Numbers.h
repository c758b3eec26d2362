#pragma once

#include <string>
#include <string_view>

#include "config/ElementDescription.h"

namespace orvane::nimbrel::check {

/// Whether a kind of value is a number.
[[nodiscard]] bool isNumeric(config::ValueKind kind) noexcept;

/// Whether a text without white space at its ends is a number of this kind and nothing else.
[[nodiscard]] bool isWholeNumber(config::ValueKind kind, std::string_view text);

/// The number that the parser reads at the beginning of a text which it accepts.
[[nodiscard]] std::string usedNumber(config::ValueKind kind, const std::string& text);

}  // namespace orvane::nimbrel::check
