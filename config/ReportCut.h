#pragma once

#include <string_view>

#include "config/Report.h"

// A number was read of a text that says more, or something else: "480px", "1 2", "x", "1,5". Each
// tells so, with the number that was taken, and nothing when the text is just that number.
namespace orvane::nimbrel::config::detail {

/// `Number` is unsigned int, int, float or double: the way in which the number was read.
template <typename Number>
void explainCut(Number taken, std::string_view attribute, std::string_view text,
                const Report& lost);

/// The same, if somebody listens.
template <typename Number>
void reportCut(Number taken, std::string_view attribute, std::string_view text,
               const Report& lost) {
  if (lost) {
    explainCut(taken, attribute, text, lost);
  }
}

}  // namespace orvane::nimbrel::config::detail
