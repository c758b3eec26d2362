#include "tools/record/RecordText.h"

#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "tools/output/TextReport.h"

namespace orvane::nimbrel::tools {
namespace {

using config::Config;
using util::LocalizableString;

std::string languageNote(const std::string& language, LocalizableString::Direction direction) {
  return '(' + (language.empty() ? std::string() : language + ", ") + directionName(direction) +
         ')';
}

/// A row for a value, if it is there.
template <typename Value>
void add(TextReport& report, const char* label, const Value& value) {
  if constexpr (IS_OPTION<Value>) {
    if (value) {
      add(report, label, value.get());
    }
  } else if constexpr (std::is_integral_v<Value>) {
    report.row(label, std::to_string(value));
  } else if constexpr (std::is_same_v<Value, LocalizableString>) {
    report.lines(label, value.c_str(), languageNote(value.getLanguageTag(), value.getDirection()));
    const auto& runs = value.getTextNodes();
    for (const auto& run : runs) {
      if (runs.size() > 1 || run.languageTag != value.getLanguageTag() ||
          run.direction != value.getDirection()) {
        report.row("  run", run.text, languageNote(run.languageTag, run.direction));
      }
    }
  } else {
    report.row(label, value);
  }
}

std::string sizeOf(const Config::Icon& icon) {
  if (icon.width && icon.height) {
    return std::to_string(icon.width.get()) + " x " + std::to_string(icon.height.get());
  }
  return icon.width    ? "width " + std::to_string(icon.width.get())
         : icon.height ? "height " + std::to_string(icon.height.get())
                       : "no size";
}

void addWidget(TextReport& report, const Config& config) {
  report.section("Widget");
  add(report, "name", config.getName());
  add(report, "short name", config.getShortName());
  add(report, "version", config.getVersion());
  add(report, "id", config.getId());
  add(report, "store id", config.getTavloApplicationId());
  add(report, "store version", config.getTavloApplicationVersion());
  add(report, "description", config.getDescription());
  if (config.getAuthor()) {
    const Config::Author& author = config.getAuthor().get();
    add(report, "author", author.name);
    add(report, "  link", author.href);
    add(report, "  e-mail", author.email);
  }
  if (config.getLicense()) {
    add(report, "license", config.getLicense().get().text);
    add(report, "  link", config.getLicense().get().href);
  }
  add(report, "width", config.getWidth());
  add(report, "height", config.getHeight());
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
    report.row(icon.src, sizeOf(icon));
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
      report.row("  " + name, value);
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

void addExtensions(TextReport& report, const Config& config) {
  const auto addGroup = [&](const char* title, const auto& settings) {
    report.section(title);
    forEachSetting(settings, [&](const auto&... cells) { report.row(cells...); });
  };
  const auto addPermissions = [&](const char* title, const auto& permissions) {
    report.section(title);
    for (const auto& [name, isAllowed] : permissions) {
      report.row(name, isAllowed ? "allowed" : "not allowed");
    }
  };
  addGroup("Network", config.getNetSettings());
  addGroup("Cookie jar", config.getCookieJarSettings());
  report.section("Authentication");
  if (config.getOrvnAuthMode() != 0) {
    report.row("mode", "token");
  }
  addGroup("Settings", config.getAppSettings());
  report.section("Browser chrome");
  if (config.getChromeSettings() != "system") {
    report.row("search bar", config.getChromeSettings());
  }
  addGroup("Gestures", config.getGestureSettings());
  addPermissions("Permissions", config.getAppPermissions());
  addPermissions("Messaging", config.getMessagingPermissions());
  addGroup("Local resources", config.getLocalResources());
  report.section("Exports");
  for (const std::string& path : exportedPaths(config)) {
    report.row("resource", path);
  }
}

/// How often an element of each name was read, by namespace.
using Names = std::map<std::string_view, std::size_t>;
using ElementCounts = std::map<std::string_view, Names>;

ElementCounts countElements(const std::vector<config::Element>& elements) {
  // The tree has each namespace once: a long one is not compared for each element.
  std::map<const char*, std::pair<std::string_view, Names>> byAddress;
  for (const config::Element& element : elements) {
    const std::string_view uri = element.getNode()->namespaceView();
    auto& [known, names] = byAddress[uri.data()];
    known = uri.data() == nullptr ? "no namespace" : uri;
    ++names[element.getNode()->nameView()];
  }
  ElementCounts counts;
  for (const auto& [address, group] : byAddress) {
    Names& names = counts[group.first];
    for (const auto& [name, count] : group.second) {
      names[name] += count;
    }
  }
  return counts;
}

/// A long namespace is printed once.
void addElements(TextReport& report, const ElementCounts& counts) {
  report.section("Elements read");
  for (const auto& [uri, names] : counts) {
    std::string_view shown = uri;
    for (const auto& [name, count] : names) {
      report.row(name, shown, count == 1 ? "" : std::to_string(count) + " times");
      shown = uri.size() > LONG_NAMESPACE ? "the same namespace" : uri;
    }
  }
}

}  // namespace

std::string join(const std::vector<std::string>& words) {
  std::string joined;
  for (const std::string& word : words) {
    joined += (joined.empty() ? "" : ", ") + word;
  }
  return joined;
}

void printRecordText(const ShownDocument& document, bool colour) {
  const ElementCounts counts = countElements(document.record.elements());
  TextReport::print(colour, [&](TextReport& report) {
    addWidget(report, document.record);
    addLists(report, document.record);
    addExtensions(report, document.record);
    addElements(report, counts);
    report.section("Error text of the parser");
    if (!document.errorText.empty()) {
      report.row("message", document.errorText);
    }
  });
}

}  // namespace orvane::nimbrel::tools
