#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "tools/output/JsonWriter.h"
#include "tools/record/RecordFields.h"

namespace orvane::nimbrel::tools {

/// Writes the elements that were read, in order. Where an earlier one has the same long namespace,
/// the place of that one stands in place of it.
inline void writeElements(JsonWriter& json, const std::vector<config::Element>& elements) {
  std::map<const char*, std::size_t> places;  // of the first with this namespace of the tree
  json.beginArray();
  for (std::size_t i = 0; i < elements.size(); ++i) {
    const std::string_view uri = elements[i].getNode()->namespaceView();
    const std::size_t first =
        uri.size() > LONG_NAMESPACE ? places.emplace(uri.data(), i).first->second : i;
    json.beginObject();
    json.member("name", elementName(elements[i]));
    if (first != i) {
      json.member("namespaceOf", first);
    } else if (uri.data() != nullptr) {
      json.member("namespace", uri);
    } else {
      json.member("namespace", nullptr);
    }
    json.endObject();
  }
  json.endArray();
}

/// Writes a value of the record: an absent option as null, a structure as an object with a key for
/// each of its fields.
template <typename Value>
void writeValue(JsonWriter& json, const Value& value) {
  if constexpr (std::is_same_v<Value, std::vector<config::Element>>) {
    writeElements(json, value);
  } else if constexpr (HAS_FIELDS<Value>) {
    json.beginObject();
    forEachField(value, [&](const auto& field, const auto& content) {
      json.key(field.name);
      writeValue(json, content);
    });
    json.endObject();
  } else if constexpr (IS_OPTION<Value>) {
    value ? writeValue(json, value.get()) : json.value(nullptr);
  } else if constexpr (IS_LIST<Value>) {
    json.beginArray();
    for (const auto& entry : value) {
      writeValue(json, entry);
    }
    json.endArray();
  } else if constexpr (IS_MAP<Value>) {
    json.beginObject();
    for (const auto& [name, content] : value) {
      json.key(name);
      writeValue(json, content);
    }
    json.endObject();
  } else {
    json.value(value);
  }
}

/// Writes all that is shown of a document as one object.
inline void writeRecord(JsonWriter& json, config::BasicConfig& record,
                        const std::string& errorText) {
  json.beginObject();
  forEachField(record, errorText, [&](const char* name, const auto& value) {
    json.key(name);
    writeValue(json, value);
  });
  json.endObject();
}

}  // namespace orvane::nimbrel::tools
