#include "config/NimbrelConfigParser.h"
#include "config/ReportCut.h"
#include "config/StreamNumbers.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using detail::ChildRule;
using detail::ExtensionFrame;
using detail::Report;
using detail::Setting;

constexpr ChildRule RULE = {"asset", "tavlo:resources unknown sub element", "key",
                            "tavlo:resources, missing attributes for tavlo:resources element"};
constexpr const char* SITE = "NimbrelConfigParser::processLocalResources";

using Local = Config::LocalResources;

// "yes" counts for this flag only, on purpose.
void storeDatabaseStorage(Local& local, const std::string& value, const Report& lost) {
  static constexpr detail::Words WORDS = {
      {"true", "yes"},
      {"false", "no"},
      "Only \"true\" and \"yes\" switch it on; all else switches it off."};
  local.databaseStorage = detail::isOn(WORDS, value, lost);
}

// Assigned last-wins.
constexpr struct Row {
  std::string_view key;
  detail::Effect<Local> effect;
} KEYS[] = {
    {"LocalStorageQuota", detail::storeNumber<Local, &Local::localStorageQuota>},
    {"LocalStoragePath", detail::storeText<Local, &Local::localStoragePath>},
    {"DatabaseStorage", storeDatabaseStorage},
    {"DatabaseStorageQuota", detail::storeNumber<Local, &Local::databaseStorageQuota>},
    {"DatabaseStoragePath", detail::storeText<Local, &Local::databaseStoragePath>},
    {"ApplicationCachePath", detail::storeText<Local, &Local::applicationCachePath>},
    {"AllowHTTPSApplicationManifestCrossDomain",
     detail::storeWhetherTrue<Local, &Local::allowHTTPSApplicationManifestCrossDomain>},
    {"ApplicationCacheQuota", detail::storeNumber<Local, &Local::applicationCacheQuota>},
};
constexpr std::string_view LOAD_DELAY = "ApplicationCacheLoadDelay";

/// Other keys are the application's own.
void reportIfSimilar(const std::string& key, const Report& lost) {
  if (lost) {
    detail::Suggestion suggestion(key);
    for (const Row& row : KEYS) {
      suggestion.consider(row.key);
    }
    suggestion.consider(LOAD_DELAY);
    if (!suggestion.get().empty()) {
      lost(LegacyCode::SIMILAR_KEY, "key", key, "It is kept among the settings without meaning.",
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
        if (const Row* const row = detail::findRow(KEYS, key)) {
          row->effect(local, value, lost);
        } else if (key == LOAD_DELAY) {
          const double delay = detail::readStreamed(value, 0.0);
          if (delay >= 0.0) {
            local.applicationCacheLoadDelay = delay;
            detail::reportCut(delay, "value", value, lost);
          } else {
            setError("Invalid ApplicationCacheLoadDelay: " + value);
            lost(LegacyCode::VALUE_REFUSED, "value", value, "A delay is not negative.");
          }
        } else {
          reportIfSimilar(key, lost);
          local.otherSettings[key] = value;
        }
        detail::logKeyValue(SITE, setting);
      });
}

}  // namespace orvane::nimbrel::config
