#pragma once

#include <string_view>

#include "config/Report.h"

// A number was read of a text that says more, or something else: "480px", "1 2", "x", "1,5". Each
// tells so, with the number that was taken, and nothing when the text is just that number.
namespace orvane::nimbrel::config::internal {

/// @name By the way in which the number was read
/// @{
void reportCut(unsigned int taken, std::string_view attribute, std::string_view text,
               const Report& lost);
void reportCut(int taken, std::string_view attribute, std::string_view text, const Report& lost);
void reportCut(float taken, std::string_view attribute, std::string_view text, const Report& lost);
void reportCut(double taken, std::string_view attribute, std::string_view text, const Report& lost);
/// @}

}  // namespace orvane::nimbrel::config::internal
