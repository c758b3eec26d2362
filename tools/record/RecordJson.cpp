#include "tools/record/RecordJson.h"

#include <map>
#include <set>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tools/record/RecordFields.h"

namespace orvane::nimbrel::tools {
namespace {

using config::Config;
using util::LocalizableString;

/// Writes the values of a record. A class, so that each function knows those below it.
class RecordWriter {
 public:
  explicit RecordWriter(JsonSink& json) : json_(json) {}

  template <typename Value>
  void member(std::string_view name, const Value& value) {
    json_.key(name);
    write(value);
  }

  template <typename Record>
  void members(const Record& record) {
    forEachField(record, [&](const auto& field, const auto& value) { member(field.name, value); });
  }

 private:
  template <typename Value>
  std::enable_if_t<std::is_arithmetic_v<Value>> write(const Value& value) {
    json_.value(value);
  }

  void write(std::string_view text) { json_.value(text); }
  void write(const std::string& text) { json_.value(text); }

  template <typename Value>
  void write(const util::Option<Value>& option) {
    if (option) {
      write(option.get());
    } else {
      json_.value(nullptr);
    }
  }

  template <typename Value>
  void write(const std::vector<Value>& list) {
    json_.beginArray();
    for (const Value& entry : list) {
      write(entry);
    }
    json_.endArray();
  }

  template <typename Value>
  void write(const std::map<std::string, Value>& values) {
    json_.beginObject();
    for (const auto& [name, value] : values) {
      member(name, value);
    }
    json_.endObject();
  }

  void write(const std::pair<std::string, std::string>& parameter) {
    json_.beginObject();
    member("name", parameter.first);
    member("value", parameter.second);
    json_.endObject();
  }

  void write(const LocalizableString& text) {
    json_.beginObject();
    json_.member("text", text.c_str());
    json_.member("language", text.getLanguageTag());
    json_.member("direction", directionName(text.getDirection()));
    member("runs", text.getTextNodes());
    json_.endObject();
  }

  void write(const LocalizableString::TextNode& run) {
    json_.beginObject();
    json_.member("text", run.text);
    json_.member("language", run.languageTag);
    json_.member("direction", directionName(run.direction));
    json_.endObject();
  }

  void write(const Config::AccessRequest& request) {
    json_.beginObject();
    member("allOrigins", request.allOrigins != 0);
    member("scheme", request.scheme);
    member("host", request.host);
    member("port", request.port);
    member("subdomains", request.subdomains);
    json_.endObject();
  }

  /// Without copying: many elements may have one very long namespace.
  void write(const config::Element& element) {
    const std::string_view namespaceUri = element.getNode()->namespaceView();
    json_.beginObject();
    json_.member("name", element.getNode()->nameView());
    json_.key("namespace");
    if (namespaceUri.data() == nullptr) {
      json_.value(nullptr);
    } else {
      json_.value(namespaceUri);
    }
    json_.endObject();
  }

  void write(const std::unordered_map<std::string, Config::Export>& exports) {
    std::set<std::string> paths;
    for (const auto& entry : exports) {
      paths.insert(entry.second.resourcePath);
    }
    write(std::vector<std::string>(paths.begin(), paths.end()));
  }

  template <typename Record>
  std::enable_if_t<HAS_FIELDS<Record>> write(const Record& record) {
    json_.beginObject();
    members(record);
    json_.endObject();
  }

  JsonSink& json_;
};

}  // namespace

void recordToJson(JsonSink& json, config::BasicConfig& record, const std::string& errorText) {
  RecordWriter writer(json);
  json.beginObject();
  writer.members(static_cast<const Config&>(record));
  writer.member("elements", record.elements());
  writer.member("errorText", errorText);
  json.endObject();
}

}  // namespace orvane::nimbrel::tools
