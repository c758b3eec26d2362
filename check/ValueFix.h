#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "check/Fix.h"

namespace orvane::nimbrel::check {

/// How to fix the value of an attribute, which stands at `value` in `text`, between quotes; nothing
/// when that is not certain. White space around what is wrong stays. Throws only
/// `std::bad_alloc`, as does `escapedValue`. For any thread.
[[nodiscard]] std::vector<Edit> fixesOfValue(const Diagnostic& finding, std::string_view text,
                                             Span value);

/// A text as it is written in the value of an attribute between these quotes.
[[nodiscard]] std::string escapedValue(std::string_view text, char quote);

}  // namespace orvane::nimbrel::check
