#include "config/NimbrelConfigParser.h"
#include "config/StreamNumbers.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using internal::ChildRule;
using internal::ExtensionFrame;
using internal::Setting;

constexpr ChildRule RULE = {"asset", "tavlo:resources unknown sub element", "key",
                            "tavlo:resources, missing attributes for tavlo:resources element"};
constexpr const char* SITE = "NimbrelConfigParser::processLocalResources";

using Local = Config::LocalResources;

void storeDatabaseStorage(Local& local, const std::string& value, const ConfigRules& /*rules*/) {
  local.databaseStorage = value == "true" || value == "yes";
}

// Assigned last-wins; "yes" counts for the first flag only, on purpose.
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

}  // namespace

bool NimbrelConfigParser::processLocalResources(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr || config == nullptr) {
    return false;
  }
  Local& local = config->localResources();
  return ExtensionFrame(*this, rules)
      .forEachSetting(*node, RULE, [&](const Setting& setting, const util::XmlNode& /*child*/) {
        const std::string& key = setting.keyText();
        const std::string& value = setting.valueText();
        if (const Row* const row = internal::findRow(KEYS, key)) {
          row->effect(local, value, rules);
        } else if (key == LOAD_DELAY) {
          const double delay = internal::extractDouble(value, 0.0);
          if (delay >= 0.0) {
            local.applicationCacheLoadDelay = delay;
          } else {
            setError("Invalid ApplicationCacheLoadDelay: " + value);
          }
        } else {
          local.otherSettings[key] = value;
        }
        internal::logKeyValue(SITE, setting);
      });
}

}  // namespace orvane::nimbrel::config
