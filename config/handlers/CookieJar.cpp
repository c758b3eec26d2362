#include "config/NimbrelConfigParser.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using internal::ChildRule;
using internal::ExtensionFrame;
using internal::Setting;

constexpr ChildRule RULE = {"asset", "tavlo:cookiejar is missing tavlo:asset element ", "key",
                            "tavlo:cookie, missing attributes for tavlo:asset element"};
// The name that this handler had in the lines that hosts already filter by.
constexpr const char* SITE = "XmlConfigParser::processCookieJar";

using Jar = Config::CookieJarSettings;

// Flags are only ever raised: any value but "true" leaves them as they were.
constexpr struct Row {
  std::string_view key;
  bool Jar::*flag;
} KEYS[] = {
    {"persistent", &Jar::persistent},
    {"usePrivateCookies", &Jar::usePrivateCookies},
    {"useDeviceCookies", &Jar::useDeviceCookies},
    {"useAuthCookies", &Jar::useAuthCookies},
    {"useAccessToken", &Jar::useAccessToken},
    {"useAuthCookiesForRegionalStack", &Jar::useAuthCookiesForRegionalStack},
};

}  // namespace

bool NimbrelConfigParser::processCookieJar(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr || config == nullptr) {
    return false;
  }
  Jar& jar = config->cookieJarSettings();
  return ExtensionFrame(*this, rules)
      .forEachSetting(*node, RULE, [&](const Setting& setting, const util::XmlNode& /*child*/) {
        internal::logKeyValue(SITE, setting);
        const Row* const row = internal::findRow(KEYS, setting.keyText());
        if (row != nullptr && setting.valueText() == "true") {
          jar.*row->flag = true;
        }
      });
}

}  // namespace orvane::nimbrel::config
