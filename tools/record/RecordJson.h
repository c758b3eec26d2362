#pragma once

#include <string>

#include "tools/output/JsonWriter.h"
#include "tools/record/RecordFields.h"

namespace orvane::nimbrel::tools {

/// Writes a value of the record: an absent option as null, a structure as an object with a key for
/// each of its fields.
template <typename Value>
void writeValue(JsonWriter& json, const Value& value) {
  if constexpr (HAS_FIELDS<Value>) {
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
