#include "config/NimbrelConfigParser.h"
#include "config/ReportCut.h"
#include "config/StreamNumbers.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using internal::ChildRule;
using internal::ExtensionFrame;
using internal::Report;
using internal::Setting;

constexpr ChildRule RULE = {"asset", "tavlo:resources unknown sub element", "key",
                            "tavlo:resources, missing attributes for tavlo:resources element"};
constexpr const char* SITE = "NimbrelConfigParser::processLocalResources";

using Local = Config::LocalResources;

// "yes" counts for this flag only, on purpose.
void storeDatabaseStorage(Local& local, const std::string& value, const Report& lost) {
  static constexpr internal::Words WORDS = {
      {"true", "yes"},
      {"false", "no"},
      "Only \"true\" and \"yes\" switch it on; all else switches it off."};
  local.databaseStorage = internal::isOn(WORDS, value, lost);
}

// Assigned last-wins.
constexpr struct Row {
  std::string_view key;
  internal::Effect<Local> effect;
} KEYS[] = {
    {"LocalStorageQuota", internal::storeNumber<Local, &Local::localStorageQuota>},
    {"LocalStoragePath", internal::storeText<Local, &Local::localStoragePath>},
    {"DatabaseStorage", storeDatabaseStorage},
    {"DatabaseStorageQuota", internal::storeNumber<Local, &Local::databaseStorageQuota>},
    {"DatabaseStoragePath", internal::storeText<Local, &Local::databaseStoragePath>},
    {"ApplicationCachePath", internal::storeText<Local, &Local::applicationCachePath>},
    {"AllowHTTPSApplicationManifestCrossDomain",
     internal::storeWhetherTrue<Local, &Local::allowHTTPSApplicationManifestCrossDomain>},
    {"ApplicationCacheQuota", internal::storeNumber<Local, &Local::applicationCacheQuota>},
};
constexpr std::string_view LOAD_DELAY = "ApplicationCacheLoadDelay";

/// Other keys are the application's own.
void reportIfSimilar(const std::string& key, const Report& lost) {
  if (lost) {
    internal::Suggestion suggestion(key);
    for (const Row& row : KEYS) {
      suggestion.consider(row.key);
    }
    suggestion.consider(LOAD_DELAY);
    if (!suggestion.get().empty()) {
      lost(FindingCode::SIMILAR_KEY, "key", key, "It is kept among the settings without meaning.",
           suggestion.get());
    }
  }
}

}  // namespace

bool NimbrelConfigParser::processLocalResources(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr || config == nullptr) {
    return false;
  }
  Local& local = config->localResources();
  return ExtensionFrame(*this, rules, observation.get())
      .forEachSetting(*node, RULE, [&](const Setting& setting, const Report& lost) {
        const std::string& key = setting.keyText();
        const std::string& value = setting.valueText();
        lost.ifRepeated("key", key, "The later value replaces the earlier one.");
        if (const Row* const row = internal::findRow(KEYS, key)) {
          row->effect(local, value, lost);
        } else if (key == LOAD_DELAY) {
          const double delay = internal::extractDouble(value, 0.0);
          if (delay >= 0.0) {
            local.applicationCacheLoadDelay = delay;
            internal::reportCut(delay, "value", value, lost);
          } else {
            setError("Invalid ApplicationCacheLoadDelay: " + value);
            lost(FindingCode::VALUE_REFUSED, "value", value, "A delay is not negative.");
          }
        } else {
          reportIfSimilar(key, lost);
          local.otherSettings[key] = value;
        }
        internal::logKeyValue(SITE, setting);
      });
}

}  // namespace orvane::nimbrel::config
