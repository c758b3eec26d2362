#include "config/ExtractNumber.h"
#include "config/handlers/KeyTable.h"

namespace orvane::nimbrel::config::detail {
namespace resources {

using Local = Config::LocalResources;

constexpr ErrorTexts TEXTS = {"tavlo:resources unknown sub element",
                              "tavlo:resources, missing attributes for tavlo:resources element"};
constexpr const char* SITE = "NimbrelConfigParser::processLocalResources";

constexpr ChildDescription CHILDREN[] = {{"asset", KEY_AND_VALUE, "key"}};

// "yes" counts for this flag only, on purpose.
constexpr SwitchWords TRUE_OR_YES = {{"true", "yes"}, {"false", "no"}};

static void storeLoadDelay(Local& local, const Setting& setting) {
  const double delay = extractNumber(setting.valueText(), 0.0);
  if (delay >= 0.0) {
    local.applicationCacheLoadDelay = delay;
  } else {
    setting.context.errorText = "Invalid ApplicationCacheLoadDelay: " + setting.valueText();
    setting.reportValue(FindingCode::OUT_OF_RANGE);
  }
}

constexpr KeyTable KEYS({
    storesNumber<&Local::localStorageQuota>("LocalStorageQuota", "localStorageQuota"),
    storesText<&Local::localStoragePath>("LocalStoragePath", "localStoragePath", ValueKind::PATH),
    storesSwitch<&Local::databaseStorage, TRUE_OR_YES>("DatabaseStorage", "databaseStorage"),
    storesNumber<&Local::databaseStorageQuota>("DatabaseStorageQuota", "databaseStorageQuota"),
    storesText<&Local::databaseStoragePath>("DatabaseStoragePath", "databaseStoragePath",
                                            ValueKind::PATH),
    storesText<&Local::applicationCachePath>("ApplicationCachePath", "applicationCachePath",
                                             ValueKind::PATH),
    storesSwitch<&Local::allowHTTPSApplicationManifestCrossDomain, TRUE_WORD>(
        "AllowHTTPSApplicationManifestCrossDomain", "allowHTTPSApplicationManifestCrossDomain"),
    storesNumber<&Local::applicationCacheQuota>("ApplicationCacheQuota", "applicationCacheQuota"),
    {{"ApplicationCacheLoadDelay", ValueKind::DECIMAL, KeyRule::LAST_COUNTS,
      "applicationCacheLoadDelay"},
     storeLoadDelay},
});

// Other keys are the application's own.
constexpr KeyDescription ANY_KEY = {ANY_NAME, ValueKind::TEXT, KeyRule::LAST_COUNTS,
                                    "otherSettings.*"};

static bool handle(HandlerContext& context, const Node& node) {
  Local& local = context.record.localResources();
  return forEachSetting(context, *node, CHILDREN[0], TEXTS, [&](const Setting& setting) {
    if (!KEYS.apply(setting.keyText(), local, setting)) {
      local.otherSettings[setting.keyText()] = setting.valueText();
    }
    logKeyValue(SITE, setting);
  });
}

}  // namespace resources

const KnownElement RESOURCES =
    extensionElement("resources", Repetition::ADDS, resources::handle, "localResources",
                     resources::CHILDREN, resources::KEYS, &resources::ANY_KEY);

}  // namespace orvane::nimbrel::config::detail
