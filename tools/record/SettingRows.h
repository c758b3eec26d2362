#pragma once

#include <functional>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

#include "config/Config.h"
#include "tools/record/Number.h"
#include "tools/record/RecordFields.h"

namespace orvane::nimbrel::tools {

template <typename Rows, typename Value>
void addSetting(Rows& rows, const char* label, const Value& value, const Value& unset) {
  if (value == unset) {
    return;
  }
  if constexpr (std::is_same_v<Value, bool>) {
    rows.row(label, value ? "yes" : "no");
  } else if constexpr (std::is_floating_point_v<Value>) {
    rows.row(label, shortest(value));
  } else if constexpr (std::is_integral_v<Value>) {
    rows.row(label, std::to_string(value));
  } else {
    rows.row(label, value);
  }
}

template <typename Rows>
void addSetting(Rows& rows, const char* label, const std::vector<std::string>& values,
                const std::vector<std::string>& /*unset*/) {
  for (const std::string& value : values) {
    rows.row(label, value);
  }
}

template <typename Rows>
void addSetting(Rows& rows, const char* /*label*/, const std::map<std::string, std::string>& values,
                const std::map<std::string, std::string>& /*unset*/) {
  for (const auto& [key, value] : values) {
    rows.row(key, value);
  }
}

template <typename Rows>
void addSetting(Rows& rows, const char* label, const config::Config::Gesture& gesture,
                const config::Config::Gesture& unset) {
  if (gesture.enabled || gesture.properties != unset.properties) {
    rows.row(label, gesture.enabled ? "enabled" : "disabled", gesture.properties);
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
