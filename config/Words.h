#pragma once

#include <string>
#include <string_view>

#include "config/Report.h"

namespace orvane::nimbrel::config::detail {

/// The words that throw a switch and those that leave it as it is by intent; and what to tell of
/// any other, which leaves it, too. Where there is one word only, it stands twice.
struct Words {
  std::string_view on[2];
  std::string_view off[2];
  std::string_view reason;
};

/// Whether a value is one of the words that throw the switch.
[[nodiscard]] bool isOn(const Words& words, const std::string& value, const Report& lost);

}  // namespace orvane::nimbrel::config::detail
