#include "tools/record/Field.h"

#include <charconv>
#include <string_view>

#include "tools/Escape.h"
#include "tools/Failure.h"

namespace orvane::nimbrel::tools {
namespace {

/// The entry of a list that `path` begins with, and the rest of the path; null for none.
const Json* entryOf(const Json& list, std::string_view& path) {
  std::size_t index = 0;
  const auto [end, error] = std::from_chars(path.data(), path.data() + path.size(), index);
  const auto length = static_cast<std::size_t>(end - path.data());
  if (error != std::errc() || index >= list.size() ||
      (length < path.size() && path[length] != '.')) {
    return nullptr;
  }
  path.remove_prefix(length < path.size() ? length + 1 : length);
  return &list[index];
}

/// The member of an object that `path` begins with; the longest, as names from a document may have
/// dots themselves.
const Json* memberOf(const Json& object, std::string_view& path) {
  for (std::size_t end = path.size(); end != std::string_view::npos && end != 0;
       end = path.rfind('.', end - 1)) {
    const auto member = object.find(std::string(path.substr(0, end)));
    if (member != object.end()) {
      path.remove_prefix(end < path.size() ? end + 1 : end);
      return &*member;
    }
  }
  return nullptr;
}

const Json* step(const Json& value, std::string_view& path) {
  if (value.is_array()) {
    return entryOf(value, path);
  }
  return value.is_object() ? memberOf(value, path) : nullptr;
}

/// Whether other records may have more here than this empty one.
bool isOpen(const Json& value) {
  return value.is_null() || value.is_array() || (value.is_object() && value.empty());
}

bool isText(const Json& value) {
  return value.is_object() && value.contains("text") && value.contains("runs");
}

std::string lineOf(const Json& value) {
  if (value.is_string()) {
    return value.get<std::string>();
  }
  if (isText(value)) {
    return value["text"].get<std::string>();
  }
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

void requireField(const std::string& name) {
  config::BasicConfig empty;
  const Json record = recordToJson(empty, "");
  const Json* value = &record;
  for (std::string_view rest = name; value != nullptr && !rest.empty() && !isOpen(*value);) {
    value = step(*value, rest);
  }
  if (value == nullptr || name.empty()) {
    throw Failure(EXIT_UNUSABLE, "nimbrel-config: there is no field \"" + name +
                                     "\"; the keys of --format json are fields");
  }
}

Json fieldOf(const Json& record, const std::string& name) {
  const Json* value = &record;
  for (std::string_view rest = name; value != nullptr && !rest.empty();) {
    value = step(*value, rest);
  }
  return value == nullptr ? Json() : *value;
}

std::string fieldToText(const Json& field, const std::string& prefix) {
  std::string text;
  const auto add = [&](const Json& value) { text += escape(prefix + lineOf(value)) + '\n'; };
  if (field.is_array()) {
    for (const Json& entry : field) {
      add(entry);
    }
  } else if (!field.is_null()) {
    add(field);
  }
  return text;
}

}  // namespace orvane::nimbrel::tools
