#include "config/StreamNumbers.h"
#include "config/handlers/KeyTable.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

using Local = Config::LocalResources;

constexpr ErrorTexts TEXTS = {"tavlo:resources unknown sub element",
                              "tavlo:resources, missing attributes for tavlo:resources element"};
constexpr const char* SITE = "NimbrelConfigParser::processLocalResources";

constexpr ChildDescription CHILDREN[] = {{"asset", KEY_AND_VALUE, "key"}};

// "yes" counts for this flag only, on purpose.
constexpr SwitchWords TRUE_OR_YES = {{"true", "yes"}, {"false", "no"}};

void storeLoadDelay(Local& local, const KeyDescription& /*key*/, const Setting& setting) {
  const double delay = readStreamed(setting.valueText(), 0.0);
  if (delay >= 0.0) {
    local.applicationCacheLoadDelay = delay;
  } else {
    setting.context.parser.setError("Invalid ApplicationCacheLoadDelay: " + setting.valueText());
    setting.report(FindingCode::OUT_OF_RANGE, setting.valueAttribute(), setting.value);
  }
}

constexpr KeyTable KEYS({
    storesNumber<&Local::localStorageQuota>("LocalStorageQuota",
                                            "localResources.localStorageQuota"),
    storesText<&Local::localStoragePath>("LocalStoragePath", "localResources.localStoragePath",
                                         ValueKind::PATH),
    storesSwitch<&Local::databaseStorage>("DatabaseStorage", "localResources.databaseStorage",
                                          TRUE_OR_YES),
    storesNumber<&Local::databaseStorageQuota>("DatabaseStorageQuota",
                                               "localResources.databaseStorageQuota"),
    storesText<&Local::databaseStoragePath>("DatabaseStoragePath",
                                            "localResources.databaseStoragePath", ValueKind::PATH),
    storesText<&Local::applicationCachePath>("ApplicationCachePath",
                                             "localResources.applicationCachePath",
                                             ValueKind::PATH),
    storesSwitch<&Local::allowHTTPSApplicationManifestCrossDomain>(
        "AllowHTTPSApplicationManifestCrossDomain",
        "localResources.allowHTTPSApplicationManifestCrossDomain", TRUE_WORD),
    storesNumber<&Local::applicationCacheQuota>("ApplicationCacheQuota",
                                                "localResources.applicationCacheQuota"),
    {{"ApplicationCacheLoadDelay", ValueKind::DECIMAL, KeyRule::LAST_COUNTS,
      "localResources.applicationCacheLoadDelay"},
     storeLoadDelay},
});

// Other keys are the application's own.
constexpr KeyDescription ANY_KEY = {
    {}, ValueKind::TEXT, KeyRule::LAST_COUNTS, "localResources.otherSettings.*"};

bool handle(const HandlerContext& context, const std::shared_ptr<util::XmlNode>& node) {
  Local& local = context.record.localResources();
  return ExtensionFrame(context, TEXTS)
      .forEachSetting(*node, CHILDREN[0], [&](const Setting& setting) {
        if (!KEYS.apply(setting.keyText(), local, setting)) {
          local.otherSettings[setting.keyText()] = setting.valueText();
        }
        logKeyValue(SITE, setting);
      });
}

}  // namespace

extern const KnownElement RESOURCES;
const KnownElement RESOURCES = {
    {"resources", true, Repetition::ADDS, {}, {}, {}, CHILDREN, KEYS.descriptions(), &ANY_KEY},
    handle};

}  // namespace detail

bool NimbrelConfigParser::processLocalResources(const std::shared_ptr<util::XmlNode>& node) {
  return processExtension(node, detail::RESOURCES);
}

}  // namespace orvane::nimbrel::config
