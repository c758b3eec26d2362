#include "tools/record/RecordText.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "tools/output/TextReport.h"
#include "tools/record/Number.h"
#include "tools/record/RecordFields.h"
#include "tools/record/SettingRows.h"

namespace orvane::nimbrel::tools {
namespace {

using config::Config;
using util::LocalizableString;

std::string languageNote(const std::string& language, LocalizableString::Direction direction) {
  return '(' + (language.empty() ? std::string() : language + ", ") + directionName(direction) +
         ')';
}

void addText(TextReport& report, const char* label, const LocalizableString& text) {
  report.lines(label, text.c_str(), languageNote(text.getLanguageTag(), text.getDirection()));
  const auto& runs = text.getTextNodes();
  for (const auto& run : runs) {
    if (runs.size() > 1 || run.languageTag != text.getLanguageTag() ||
        run.direction != text.getDirection()) {
      report.detail("run", run.text, languageNote(run.languageTag, run.direction));
    }
  }
}

void addText(TextReport& report, const char* label, const util::Option<LocalizableString>& text) {
  if (text) {
    addText(report, label, text.get());
  }
}

void addOption(TextReport& report, const char* label, const util::Option<std::string>& value) {
  if (value) {
    report.row(label, value.get());
  }
}

void addOption(TextReport& report, const char* label, const util::Option<unsigned int>& value) {
  if (value) {
    report.row(label, std::to_string(value.get()));
  }
}

std::string sizeNote(const Config::Icon& icon) {
  if (icon.width && icon.height) {
    return std::to_string(icon.width.get()) + " x " + std::to_string(icon.height.get());
  }
  if (icon.width) {
    return "width " + std::to_string(icon.width.get());
  }
  return icon.height ? "height " + std::to_string(icon.height.get()) : "";
}

std::string join(const std::vector<std::string>& words) {
  std::string joined;
  for (const std::string& word : words) {
    joined += (joined.empty() ? "" : ", ") + word;
  }
  return joined;
}

void addWidget(TextReport& report, const Config& config) {
  report.section("Widget");
  addText(report, "name", config.getName());
  addText(report, "short name", config.getShortName());
  addText(report, "version", config.getVersion());
  addOption(report, "id", config.getId());
  addOption(report, "store id", config.getTavloApplicationId());
  addOption(report, "store version", config.getTavloApplicationVersion());
  addText(report, "description", config.getDescription());
  if (config.getAuthor()) {
    const Config::Author& author = config.getAuthor().get();
    addText(report, "author", author.name);
    addOption(report, "  link", author.href);
    addOption(report, "  e-mail", author.email);
  }
  if (config.getLicense()) {
    addText(report, "license", config.getLicense().get().text);
    addOption(report, "  link", config.getLicense().get().href);
  }
  addOption(report, "width", config.getWidth());
  addOption(report, "height", config.getHeight());
  if (!config.getWindowModes().empty()) {
    report.row("view modes", join(config.getWindowModes()));
  }
  report.row("locales", join(config.getUserAgentLocales()));
  if (config.getStartFile()) {
    const Config::StartFile& file = config.getStartFile().get();
    report.row("start file", file.src);
    if (!file.encoding.empty()) {
      report.row("  encoding", file.encoding);
    }
    if (!file.type.empty()) {
      report.row("  type", file.type);
    }
  }
}

void addLists(TextReport& report, const Config& config) {
  report.section("Icons");
  for (const auto& icon : config.getIcons()) {
    report.row(icon.src, sizeNote(icon).empty() ? "no size" : sizeNote(icon));
  }
  report.section("Preferences");
  for (const auto& preference : config.getPreferences()) {
    report.row(preference.name, preference.value ? preference.value.get() : "no value",
               preference.readonly ? "(read-only)" : "");
  }
  report.section("Features");
  for (const auto& feature : config.getFeatures()) {
    report.row(feature.name, feature.required ? "required" : "optional");
    for (const auto& [name, value] : feature.params) {
      report.detail(name, value);
    }
  }
  report.section("Network access");
  for (const auto& request : config.getAccessRequestList()) {
    if (request.allOrigins != 0) {
      report.row("*", "every origin");
    } else {
      report.row(request.scheme + "://" + request.host + ':' + std::to_string(request.port),
                 request.subdomains ? "with subdomains" : "this host");
    }
  }
}

template <typename Record>
std::enable_if_t<HAS_FIELDS<Record>> addGroup(TextReport& report, const Record& record) {
  addSettings(report, record);
}

void addGroup(TextReport& report, const std::map<std::string, bool>& permissions) {
  for (const auto& [name, allowed] : permissions) {
    report.row(name, allowed ? "allowed" : "not allowed");
  }
}

void addGroup(TextReport& report, const std::vector<std::string>& exports) {
  for (const std::string& path : exports) {
    report.row("resource", path);
  }
}

template <typename Member, typename Value>
void addSection(TextReport& report, const Section<Member>& section, const Value& value) {
  report.section(section.title);
  addGroup(report, value);
}
template <typename Member, typename Value>
void addSection(TextReport& /*report*/, const Field<Member>& /*field*/, const Value& /*value*/) {}

void addExtensions(TextReport& report, const Config& config) {
  report.section("Network");
  addSettings(report, config.getNetSettings());
  report.section("Cookie jar");
  addSettings(report, config.getCookieJarSettings());
  report.section("Authentication");
  if (config.getOrvnAuthMode() != 0) {
    report.row("mode", config.getOrvnAuthMode() == 1 ? "token" : "unknown");
  }
  report.section("Settings");
  addSettings(report, config.getAppSettings());
  report.section("Browser chrome");
  if (config.getChromeSettings() != "system") {
    report.row("search bar", config.getChromeSettings());
  }
  forEachField(config,
               [&](const auto& field, const auto& value) { addSection(report, field, value); });
}

/// Orders texts of which many are one and the same, maybe a very long one.
int compare(std::string_view one, std::string_view other) noexcept {
  const bool same = one.data() == other.data() && one.size() == other.size();
  return same ? 0 : one.compare(other);
}

struct ByNamespaceAndName {
  using Names = std::pair<std::string_view, std::string_view>;
  bool operator()(const Names& one, const Names& other) const noexcept {
    const int order = compare(one.first, other.first);
    return order < 0 || (order == 0 && one.second < other.second);
  }
};

using ElementCounts = std::map<ByNamespaceAndName::Names, std::size_t, ByNamespaceAndName>;

ElementCounts countElements(const std::vector<config::Element>& elements) {
  ElementCounts counts;
  for (const config::Element& element : elements) {
    const std::string_view namespaceUri = element.getNode()->namespaceView();
    ++counts[{namespaceUri.data() == nullptr ? "no namespace" : namespaceUri,
              element.getNode()->nameView()}];
  }
  return counts;
}

/// A long namespace is printed once.
void addElements(TextReport& report, const ElementCounts& counts) {
  std::string_view last;
  report.section("Elements read");
  for (const auto& [names, count] : counts) {
    const bool isSame = names.first.size() > LONG_NAMESPACE && compare(names.first, last) == 0;
    report.row(names.second, isSame ? "the same namespace" : names.first,
               count == 1 ? "" : std::to_string(count) + " times");
    last = names.first;
  }
}

}  // namespace

void printRecordText(config::BasicConfig& record, const std::string& errorText, bool colour) {
  const ElementCounts counts = countElements(record.elements());
  TextReport::print(colour, [&](TextReport& report) {
    addWidget(report, record);
    addLists(report, record);
    addExtensions(report, record);
    addElements(report, counts);
    report.section("Last problem");
    if (!errorText.empty()) {
      report.row("message", errorText);
    }
  });
}

}  // namespace orvane::nimbrel::tools
