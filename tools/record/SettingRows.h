#pragma once

#include <charconv>
#include <functional>
#include <string>
#include <type_traits>

#include "config/Config.h"
#include "tools/record/RecordFields.h"

namespace orvane::nimbrel::tools {

/// The shortest decimal number that reads back as `value`, whatever the locale.
template <typename Number>
[[nodiscard]] std::string shortest(Number value) {
  char digits[32];
  return {digits, std::to_chars(digits, digits + sizeof(digits), value).ptr};
}

template <typename Rows, typename Value>
void addSetting(Rows& rows, const char* label, const Value& value, const Value& unset) {
  if constexpr (IS_LIST<Value>) {
    for (const std::string& entry : value) {
      rows.row(label, entry);
    }
  } else if constexpr (IS_MAP<Value>) {
    for (const auto& [key, entry] : value) {
      rows.row(key, entry);
    }
  } else if constexpr (std::is_same_v<Value, config::Config::Gesture>) {
    if (value.enabled || value.properties != unset.properties) {
      rows.row(label, value.enabled ? "enabled" : "disabled", value.properties);
    }
  } else if (value != unset) {
    if constexpr (std::is_same_v<Value, bool>) {
      rows.row(label, value ? "yes" : "no");
    } else if constexpr (std::is_arithmetic_v<Value>) {
      rows.row(label, shortest(value));
    } else {
      rows.row(label, value);
    }
  }
}

/// Calls `rows.row(name, value)` or `rows.row(name, value, note)` for each setting of a structure
/// that is not as by default.
template <typename Rows, typename Record>
void addSettings(Rows& rows, const Record& record) {
  const Record unset;
  forEachField(record, [&](const auto& field, const auto& value) {
    addSetting(rows, field.name, value, std::invoke(field.member, unset));
  });
}

}  // namespace orvane::nimbrel::tools
