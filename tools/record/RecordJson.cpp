#include "tools/record/RecordJson.h"

#include <map>
#include <set>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "tools/record/RecordFields.h"

namespace orvane::nimbrel::tools {
namespace {

using config::Config;
using util::LocalizableString;

/// Tells the values of a record. A class, so that each function knows those below it.
class RecordWriter {
 public:
  explicit RecordWriter(JsonSink& json) : json_(json) {}

  template <typename Value>
  void member(std::string_view name, const Value& value) {
    json_.key(name);
    write(value);
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

  template <typename Record, typename = decltype(fieldsOf(std::declval<const Record&>()))>
  void write(const Record& record) {
    json_.beginObject();
    forEachField(fieldsOf(record),
                 [&](const auto& field) { member(field.name, record.*field.member); });
    json_.endObject();
  }

  JsonSink& json_;
};

std::vector<std::string> exportsOf(const Config& record) {
  std::set<std::string> paths;
  for (const auto& entry : record.getExports()) {
    paths.insert(entry.second.resourcePath);
  }
  return {paths.begin(), paths.end()};
}

}  // namespace

void recordToJson(JsonSink& json, config::BasicConfig& record, const std::string& errorText) {
  const Config& config = record;
  RecordWriter writer(json);
  json.beginObject();
  writer.member("author", config.getAuthor());
  writer.member("features", config.getFeatures());
  writer.member("icons", config.getIcons());
  writer.member("startFile", config.getStartFile());
  writer.member("description", config.getDescription());
  writer.member("height", config.getHeight());
  writer.member("width", config.getWidth());
  writer.member("id", config.getId());
  writer.member("license", config.getLicense());
  writer.member("name", config.getName());
  writer.member("preferences", config.getPreferences());
  writer.member("shortName", config.getShortName());
  writer.member("windowModes", config.getWindowModes());
  writer.member("userAgentLocales", config.getUserAgentLocales());
  writer.member("version", config.getVersion());
  writer.member("tavloApplicationId", config.getTavloApplicationId());
  writer.member("tavloApplicationVersion", config.getTavloApplicationVersion());
  writer.member("accessRequestList", config.getAccessRequestList());
  writer.member("cookieJarSettings", config.getCookieJarSettings());
  writer.member("orvnAuthMode", config.getOrvnAuthMode());
  writer.member("netSettings", config.getNetSettings());
  writer.member("gestureSettings", config.getGestureSettings());
  writer.member("appPermissions", config.getAppPermissions());
  writer.member("chromeSettings", config.getChromeSettings());
  writer.member("appSettings", config.getAppSettings());
  writer.member("messagingPermissions", config.getMessagingPermissions());
  writer.member("localResources", config.getLocalResources());
  writer.member("exports", exportsOf(config));
  writer.member("elements", record.elements());
  writer.member("errorText", errorText);
  json.endObject();
}

}  // namespace orvane::nimbrel::tools
