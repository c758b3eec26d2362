#pragma once

#include <charconv>
#include <functional>
#include <string>
#include <type_traits>
#include <vector>

#include "tools/record/RecordFields.h"

namespace orvane::nimbrel::tools {

/// Prints the record for a person: what the document set or changed, and the parser's error text.
void printRecordText(const ShownDocument& document, bool colour);

/// "one, two".
[[nodiscard]] std::string join(const std::vector<std::string>& words);

/// The shortest decimal number that reads back as `value`, whatever the locale.
template <typename Number>
[[nodiscard]] std::string shortest(Number value) {
  char digits[32];
  return {digits, std::to_chars(digits, digits + sizeof(digits), value).ptr};
}

/// Calls `row(name, value, note)` for each setting of a structure that is not as by default. The
/// name is a `const char*`; that of a key of the document's own is a string.
template <typename Record, typename Row>
void forEachSetting(const Record& record, const Row& row) {
  const Record defaults;
  forEachField(record, [&](const auto& field, const auto& value) {
    using Value = std::decay_t<decltype(value)>;
    const Value unset = std::invoke(field.member, defaults);
    if constexpr (IS_LIST<Value>) {
      for (const std::string& entry : value) {
        row(field.name, entry, "");
      }
    } else if constexpr (IS_MAP<Value>) {
      for (const auto& [key, entry] : value) {
        row(key, entry, "");
      }
    } else if constexpr (std::is_same_v<Value, config::Config::Gesture>) {
      if (value.enabled || value.properties != unset.properties) {
        row(field.name, value.enabled ? "enabled" : "disabled", value.properties);
      }
    } else if (value != unset) {
      if constexpr (std::is_same_v<Value, bool>) {
        row(field.name, value ? "yes" : "no", "");
      } else if constexpr (std::is_arithmetic_v<Value>) {
        row(field.name, shortest(value), "");
      } else {
        row(field.name, value, "");
      }
    }
  });
}

}  // namespace orvane::nimbrel::tools
