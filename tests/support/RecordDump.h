#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "config/BasicConfig.h"
#include "tools/record/RecordFields.h"

namespace orvane::nimbrel::test {

/// Everything that a record holds as one text: two records are equal exactly when their dumps are.
/// Each value is written with its size, so that no value can pass for two.
class RecordDump {
 public:
  [[nodiscard]] static std::string of(config::BasicConfig& record) {
    RecordDump dump;
    dump.addAll(record);
    for (const config::Element& element : record.elements()) {
      dump.add("element", element.getName(), element.getNamespace(),
               element.getNode()->getLineNumber(), element.getTextContent());
    }
    return dump.text_;
  }

 private:
  using Config = config::Config;

  void addAll(const Config& record) {
    add("id", record.getId());
    add("names", record.getName(), record.getShortName());
    add("description", record.getDescription());
    add("version", record.getVersion());
    add("size", record.getHeight(), record.getWidth());
    add("author", record.getAuthor());
    add("license", record.getLicense());
    add("startFile", record.getStartFile());
    add("icons", record.getIcons());
    add("preferences", record.getPreferences());
    add("features", record.getFeatures());
    add("access", record.getAccessRequestList());
    add("windowModes", record.getWindowModes());
    add("locales", record.getUserAgentLocales());
    add("application", record.getTavloApplicationId(), record.getTavloApplicationVersion());
    add("authMode", record.getOrvnAuthMode());
    add("chrome", record.getChromeSettings());
    add("permissions", record.getAppPermissions());
    add("messaging", record.getMessagingPermissions());
    std::map<std::string, std::string> exports;
    for (const auto& [path, entry] : record.getExports()) {
      exports[path] = entry.resourcePath;
    }
    add("exports", exports);
    addFields(record.getCookieJarSettings(), tools::COOKIE_JAR_FIELDS);
    addFields(record.getNetSettings(), tools::NET_FIELDS);
    addFields(record.getGestureSettings(), tools::GESTURE_FIELDS);
    addFields(record.getAppSettings(), tools::APP_FIELDS);
    addFields(record.getLocalResources(), tools::LOCAL_RESOURCES_FIELDS);
  }

  template <typename Record, typename Table>
  void addFields(const Record& record, const Table& table) {
    tools::forEachField(table, [&](const auto& field) { add(field.name, record.*field.member); });
  }

  /// A line of values under a name.
  template <typename... Values>
  void add(const char* name, const Values&... values) {
    text_ += name;
    putAll(values...);
    text_ += '\n';
  }

  template <typename... Values>
  void putAll(const Values&... values) {
    (put(values), ...);
  }
  void put(const std::string& value) { text_ += " [" + std::to_string(value.size()) + "]" + value; }
  template <typename Number>
  std::enable_if_t<std::is_arithmetic_v<Number>> put(Number value) {
    put(std::to_string(value));
  }
  void put(const util::LocalizableString& text) {
    putAll(std::string(text.c_str()), text.getLanguageTag(), int{text.getDirection()},
           text.getTextNodes());
  }
  void put(const util::LocalizableString::TextNode& run) {
    putAll(run.text, run.languageTag, int{run.direction});
  }
  void put(const Config::Author& author) { putAll(author.name, author.href, author.email); }
  void put(const Config::License& license) { putAll(license.text, license.href, license.file); }
  void put(const Config::StartFile& file) { putAll(file.src, file.encoding, file.type); }
  void put(const Config::Icon& icon) { putAll(icon.src, icon.height, icon.width); }
  void put(const Config::Preference& preference) {
    putAll(preference.name, preference.value, preference.readonly);
  }
  void put(const Config::Feature& feature) {
    putAll(feature.name, feature.required, feature.params);
  }
  void put(const Config::AccessRequest& request) {
    putAll(request.allOrigins, request.scheme, request.host, request.port, request.subdomains,
           request.element->getSingleAttributeValue("origin"));
  }
  void put(const Config::Gesture& gesture) { putAll(gesture.enabled, gesture.properties); }
  template <typename Value>
  void put(const util::Option<Value>& option) {
    option ? put(option.get()) : void(text_ += " none");
  }
  template <typename First, typename Second>
  void put(const std::pair<First, Second>& pair) {
    putAll(pair.first, pair.second);
  }
  template <typename Value>
  void put(const std::vector<Value>& list) {
    putEach(list);
  }
  template <typename Value>
  void put(const std::map<std::string, Value>& map) {
    putEach(map);
  }
  template <typename List>
  void putEach(const List& list) {
    put(list.size());
    for (const auto& value : list) {
      put(value);
    }
  }

  std::string text_;
};

/// The first line in which two texts differ, such as two dumps; empty when there is none.
inline std::string difference(const std::string& actual, const std::string& expected) {
  if (actual == expected) {
    return {};
  }
  const auto start = std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
  const auto lineAt = [](const std::string& text, std::size_t at) {
    const std::size_t begin = at == 0 ? 0 : text.rfind('\n', at - 1) + 1;
    return '"' + text.substr(begin, text.find('\n', at) - begin) + '"';
  };
  const auto at = static_cast<std::size_t>(start.first - actual.begin());
  return lineAt(actual, at) + " is to be " + lineAt(expected, at);
}

}  // namespace orvane::nimbrel::test
