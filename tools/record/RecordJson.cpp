#include "tools/record/RecordJson.h"

#include <charconv>
#include <set>
#include <type_traits>

#include "tools/Escape.h"
#include "tools/record/Number.h"
#include "tools/record/RecordFields.h"

namespace orvane::nimbrel::tools {
namespace {

using config::Config;
using util::LocalizableString;

template <typename Value>
std::enable_if_t<std::is_constructible_v<Json, const Value&>, Json> toJson(const Value& value) {
  return value;
}

// JSON numbers have the precision of a double: 1.1F has to become 1.1, not 1.10000002384.
Json toJson(float value) {
  const std::string digits = shortest(value);
  double same = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), same);
  return same;
}

Json toJson(const LocalizableString& text) {
  Json runs = Json::array();
  for (const auto& run : text.getTextNodes()) {
    runs.push_back({{"text", run.text},
                    {"language", run.languageTag},
                    {"direction", directionName(run.direction)}});
  }
  return {{"text", text.c_str()},
          {"language", text.getLanguageTag()},
          {"direction", directionName(text.getDirection())},
          {"runs", std::move(runs)}};
}

template <typename Value>
Json toJson(const util::Option<Value>& option);

Json toJson(const Config::Author& author) {
  return {{"name", toJson(author.name)},
          {"href", toJson(author.href)},
          {"email", toJson(author.email)}};
}

Json toJson(const Config::Feature& feature) {
  Json params = Json::array();
  for (const auto& [name, value] : feature.params) {
    params.push_back({{"name", name}, {"value", value}});
  }
  return {{"name", feature.name}, {"required", feature.required}, {"params", std::move(params)}};
}

Json toJson(const Config::Icon& icon) {
  return {{"src", icon.src}, {"height", toJson(icon.height)}, {"width", toJson(icon.width)}};
}

Json toJson(const Config::StartFile& file) {
  return {{"src", file.src}, {"encoding", file.encoding}, {"type", file.type}};
}

Json toJson(const Config::License& license) {
  return {{"text", toJson(license.text)},
          {"file", toJson(license.file)},
          {"href", toJson(license.href)}};
}

Json toJson(const Config::Preference& preference) {
  return {{"name", preference.name},
          {"value", toJson(preference.value)},
          {"readonly", preference.readonly}};
}

Json toJson(const Config::AccessRequest& request) {
  return {{"allOrigins", request.allOrigins != 0},
          {"scheme", request.scheme},
          {"host", request.host},
          {"port", request.port},
          {"subdomains", request.subdomains}};
}

Json toJson(const Config::Gesture& gesture) {
  return {{"enabled", gesture.enabled}, {"properties", gesture.properties}};
}

Json toJson(const config::Element& element) {
  return {{"name", toJson(element.getName())}, {"namespace", toJson(element.getNamespace())}};
}

template <typename Value>
Json toJson(const util::Option<Value>& option) {
  return option ? toJson(option.get()) : Json();
}

template <typename Record>
Json listToJson(const std::vector<Record>& records) {
  Json list = Json::array();
  for (const Record& record : records) {
    list.push_back(toJson(record));
  }
  return list;
}

template <typename Record, typename Table>
Json fieldsToJson(const Record& record, const Table& table) {
  Json object = Json::object();
  forEachField(table,
               [&](const auto& field) { object[field.name] = toJson(record.*field.member); });
  return object;
}

Json exportsToJson(const Config& record) {
  std::set<std::string> paths;
  for (const auto& entry : record.getExports()) {
    paths.insert(entry.second.resourcePath);
  }
  return paths;
}

}  // namespace

Json recordToJson(config::BasicConfig& record, const std::string& errorText) {
  const Config& config = record;
  Json json = Json::object();
  json["author"] = toJson(config.getAuthor());
  json["features"] = listToJson(config.getFeatures());
  json["icons"] = listToJson(config.getIcons());
  json["startFile"] = toJson(config.getStartFile());
  json["description"] = toJson(config.getDescription());
  json["height"] = toJson(config.getHeight());
  json["width"] = toJson(config.getWidth());
  json["id"] = toJson(config.getId());
  json["license"] = toJson(config.getLicense());
  json["name"] = toJson(config.getName());
  json["preferences"] = listToJson(config.getPreferences());
  json["shortName"] = toJson(config.getShortName());
  json["windowModes"] = config.getWindowModes();
  json["userAgentLocales"] = config.getUserAgentLocales();
  json["version"] = toJson(config.getVersion());
  json["tavloApplicationId"] = toJson(config.getTavloApplicationId());
  json["tavloApplicationVersion"] = toJson(config.getTavloApplicationVersion());
  json["accessRequestList"] = listToJson(config.getAccessRequestList());
  json["cookieJarSettings"] = fieldsToJson(config.getCookieJarSettings(), COOKIE_JAR_FIELDS);
  json["orvnAuthMode"] = config.getOrvnAuthMode();
  json["netSettings"] = fieldsToJson(config.getNetSettings(), NET_FIELDS);
  json["gestureSettings"] = fieldsToJson(config.getGestureSettings(), GESTURE_FIELDS);
  json["appPermissions"] = config.getAppPermissions();
  json["chromeSettings"] = config.getChromeSettings();
  json["appSettings"] = fieldsToJson(config.getAppSettings(), APP_FIELDS);
  json["messagingPermissions"] = config.getMessagingPermissions();
  json["localResources"] = fieldsToJson(config.getLocalResources(), LOCAL_RESOURCES_FIELDS);
  json["exports"] = exportsToJson(config);
  json["elements"] = listToJson(record.elements());
  json["errorText"] = errorText;
  return json;
}

std::string printJson(const Json& json) {
  return escapeJson(json.dump(2, ' ', false, Json::error_handler_t::replace)) + '\n';
}

}  // namespace orvane::nimbrel::tools
