#pragma once

#include <charconv>
#include <string>

namespace orvane::nimbrel::tools {

/// The shortest decimal number that reads back as `value`, whatever the locale.
template <typename Real>
[[nodiscard]] std::string shortest(Real value) {
  char digits[32];
  return {digits, std::to_chars(digits, digits + sizeof(digits), value).ptr};
}

}  // namespace orvane::nimbrel::tools
