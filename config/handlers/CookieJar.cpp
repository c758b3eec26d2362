#include "config/NimbrelConfigParser.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using detail::ChildRule;
using detail::ExtensionFrame;
using detail::Report;
using detail::Setting;

constexpr ChildRule RULE = {"asset", "tavlo:cookiejar is missing tavlo:asset element ", "key",
                            "tavlo:cookie, missing attributes for tavlo:asset element"};
// The name that this handler had in the lines that hosts already filter by.
constexpr const char* SITE = "XmlConfigParser::processCookieJar";

using Jar = Config::CookieJarSettings;

constexpr detail::Words RAISING = {
    {"true", "true"},
    {"false", "false"},
    "Only \"true\" raises the flag: any other value leaves it as it was."};

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
  return ExtensionFrame(*this, rules, observation.get())
      .forEachSetting(*node, RULE, [&](const Setting& setting, const Report& lost) {
        detail::logKeyValue(SITE, setting);
        const Row* const row = detail::findRow(KEYS, setting.keyText());
        if (row == nullptr) {
          detail::reportUnknownKey(KEYS, "key", setting.keyText(), lost);
        } else if (detail::isOn(RAISING, setting.valueText(), lost)) {
          jar.*row->flag = true;
        } else if (jar.*row->flag) {
          lost(LegacyCode::REPEATED_KEY, "value", setting.value, "A flag once raised stays so.");
        }
      });
}

}  // namespace orvane::nimbrel::config
