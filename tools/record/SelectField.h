#pragma once

#include <charconv>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "tools/record/RecordFields.h"

namespace orvane::nimbrel::tools {

/// The path below the member called `name`; none when it does not lead there. Names from a document
/// may have dots themselves.
inline std::optional<std::string_view> below(std::string_view path, std::string_view name) {
  if (name.empty() || path.substr(0, name.size()) != name) {
    return std::nullopt;
  }
  path.remove_prefix(name.size());
  if (path.empty()) {
    return path;
  }
  return path.size() > 1 && path.front() == '.' ? std::optional(path.substr(1)) : std::nullopt;
}

/// Calls `use` with what `path` leads to from a value, if that has it: the names of fields, the
/// keys of a map and the places in a list, with dots between. Returns whether some value of this
/// type has it; `value` may be null to ask for that alone.
template <typename Value, typename Use>
bool select(const Value* value, std::string_view path, const Use& use) {
  if (path.empty()) {
    if (value != nullptr) {
      use(*value);
    }
    return true;
  }
  if constexpr (HAS_FIELDS<Value>) {
    const auto selectIn = [&](const auto& field) {
      using Content = std::decay_t<std::invoke_result_t<decltype(field.member), const Value&>>;
      const auto rest = below(path, field.name);
      if (rest && value != nullptr) {
        const Content& content = std::invoke(field.member, *value);
        return select(&content, *rest, use);
      }
      return rest && select<Content>(nullptr, *rest, use);
    };
    return std::apply([&](const auto&... field) { return (selectIn(field) || ...); },
                      FIELDS<Value>);
  } else if constexpr (IS_OPTION<Value>) {
    return select(value != nullptr && *value ? &value->get() : nullptr, path, use);
  } else if constexpr (IS_LIST<Value>) {
    std::size_t place = 0;
    std::from_chars(path.data(), path.data() + path.size(), place);
    const auto rest = below(path, std::to_string(place));
    const bool isThere = value != nullptr && place < value->size();
    return rest && select(isThere ? &(*value)[place] : nullptr, *rest, use);
  } else if constexpr (IS_MAP<Value>) {
    if (value != nullptr) {
      for (const auto& entry : *value) {
        const auto rest = below(path, entry.first);
        if (rest && select(&entry.second, *rest, use)) {
          break;
        }
      }
    }
    return true;  // a document chooses the keys
  } else {
    return false;
  }
}

/// The same for all that is shown of a document.
template <typename Use>
bool selectField(config::BasicConfig& record, const std::string& errorText, std::string_view path,
                 const Use& use) {
  bool isFound = false;
  forEachField(record, errorText, [&](const char* name, const auto& value) {
    const auto rest = below(path, name);
    isFound = isFound || (rest && select(&value, *rest, use));
  });
  return isFound;
}

}  // namespace orvane::nimbrel::tools
