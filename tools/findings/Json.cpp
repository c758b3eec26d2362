#include "tools/findings/Json.h"

#include "tools/JsonWriter.h"

namespace orvane::nimbrel::tools {
namespace {

void write(JsonWriter& writer, const Json& json) {
  if (json.is_object()) {
    writer.beginObject();
    for (const auto& member : json.items()) {
      writer.key(member.key());
      write(writer, member.value());
    }
    writer.endObject();
  } else if (json.is_array()) {
    writer.beginArray();
    for (const Json& entry : json) {
      write(writer, entry);
    }
    writer.endArray();
  } else if (json.is_string()) {
    writer.string(json.get_ref<const std::string&>());
  } else {
    writer.literal(json.dump());
  }
}

}  // namespace

void printJson(const Json& json) {
  JsonWriter writer;
  write(writer, json);
  writer.finish();
}

}  // namespace orvane::nimbrel::tools
