#pragma once

#include <map>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "config/BasicConfig.h"
#include "tools/RecordFields.h"

namespace orvane::nimbrel::test {

/// Everything that a record holds as one text: two records are equal exactly when their dumps are.
/// Each value is written with its size, so that no value can pass for two.
class RecordDump {
 public:
  [[nodiscard]] static std::string of(config::BasicConfig& record) {
    RecordDump dump;
    dump.addAll(record);
    for (const config::Element& element : record.elements()) {
      dump.add("element", element.getName());
      dump.add("namespace", element.getNamespace());
      dump.add("line", element.getNode()->getLineNumber());
      dump.add("content", element.getTextContent());
    }
    return dump.text_;
  }

 private:
  void addAll(const config::Config& record) {
    add("id", record.getId());
    add("name", record.getName());
    add("shortName", record.getShortName());
    add("description", record.getDescription());
    add("version", record.getVersion());
    add("height", record.getHeight());
    add("width", record.getWidth());
    if (record.getAuthor()) {
      add("author", record.getAuthor().get().name);
      add("href", record.getAuthor().get().href);
      add("email", record.getAuthor().get().email);
    }
    if (record.getLicense()) {
      add("license", record.getLicense().get().text);
      add("href", record.getLicense().get().href);
      add("file", record.getLicense().get().file);
    }
    if (record.getStartFile()) {
      add("startFile", record.getStartFile().get().src);
      add("encoding", record.getStartFile().get().encoding);
      add("type", record.getStartFile().get().type);
    }
    for (const auto& icon : record.getIcons()) {
      add("icon", icon.src);
      add("height", icon.height);
      add("width", icon.width);
    }
    for (const auto& preference : record.getPreferences()) {
      add("preference", preference.name);
      add("value", preference.value);
      add("readonly", preference.readonly);
    }
    for (const auto& feature : record.getFeatures()) {
      add("feature", feature.name);
      add("required", feature.required);
      for (const auto& [name, value] : feature.params) {
        add("param", name);
        add("value", value);
      }
    }
    for (const auto& request : record.getAccessRequestList()) {
      add("access", request.allOrigins);
      add("scheme", request.scheme);
      add("host", request.host);
      add("port", request.port);
      add("subdomains", request.subdomains);
      add("origin", request.element->getSingleAttributeValue("origin"));
    }
    add("windowModes", record.getWindowModes());
    add("locales", record.getUserAgentLocales());
    add("applicationId", record.getTavloApplicationId());
    add("applicationVersion", record.getTavloApplicationVersion());
    add("authMode", record.getOrvnAuthMode());
    add("chrome", record.getChromeSettings());
    add("permissions", record.getAppPermissions());
    add("messaging", record.getMessagingPermissions());
    std::set<std::string> exports;
    for (const auto& [path, entry] : record.getExports()) {
      exports.insert(path + '\n' + entry.resourcePath);
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

  void add(const char* name, const std::string& value) {
    text_ += name;
    text_ += '[' + std::to_string(value.size()) + "]=" + value + '\n';
  }
  template <typename Number>
  std::enable_if_t<std::is_arithmetic_v<Number>> add(const char* name, Number value) {
    add(name, std::to_string(value));
  }
  void add(const char* name, const util::LocalizableString& text) {
    add(name, std::string(text.c_str()));
    add("language", text.getLanguageTag());
    add("direction", static_cast<int>(text.getDirection()));
    for (const auto& run : text.getTextNodes()) {
      add("run", run.text);
      add("language", run.languageTag);
      add("direction", static_cast<int>(run.direction));
    }
  }
  void add(const char* name, const config::Config::Gesture& gesture) {
    add(name, gesture.enabled);
    add("properties", gesture.properties);
  }
  template <typename Value>
  void add(const char* name, const util::Option<Value>& option) {
    if (option) {
      add(name, option.get());
    } else {
      text_ += std::string(name) + " none\n";
    }
  }
  template <typename Value>
  void add(const char* name, const std::vector<Value>& list) {
    addEach(name, list);
  }
  void add(const char* name, const std::set<std::string>& set) { addEach(name, set); }
  template <typename Value>
  void add(const char* name, const std::map<std::string, Value>& map) {
    for (const auto& [key, value] : map) {
      add(name, key);
      add("value", value);
    }
  }
  template <typename List>
  void addEach(const char* name, const List& list) {
    add(name, list.size());
    for (const auto& value : list) {
      add(name, value);
    }
  }

  std::string text_;
};

}  // namespace orvane::nimbrel::test
