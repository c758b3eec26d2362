#include "config/handlers/KeyTable.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

using Jar = Config::CookieJarSettings;

constexpr ErrorTexts TEXTS = {"tavlo:cookiejar is missing tavlo:asset element ",
                              "tavlo:cookie, missing attributes for tavlo:asset element"};
// The name that this handler had in the lines that hosts already filter by.
constexpr const char* SITE = "XmlConfigParser::processCookieJar";

constexpr ChildDescription CHILDREN[] = {{"asset", KEY_AND_VALUE, "key"}};

constexpr KeyTable KEYS({
    raises<&Jar::persistent>("persistent", "cookieJarSettings.persistent", TRUE_WORD),
    raises<&Jar::usePrivateCookies>("usePrivateCookies", "cookieJarSettings.usePrivateCookies",
                                    TRUE_WORD),
    raises<&Jar::useDeviceCookies>("useDeviceCookies", "cookieJarSettings.useDeviceCookies",
                                   TRUE_WORD),
    raises<&Jar::useAuthCookies>("useAuthCookies", "cookieJarSettings.useAuthCookies", TRUE_WORD),
    raises<&Jar::useAccessToken>("useAccessToken", "cookieJarSettings.useAccessToken", TRUE_WORD),
    raises<&Jar::useAuthCookiesForRegionalStack>("useAuthCookiesForRegionalStack",
                                                 "cookieJarSettings.useAuthCookiesForRegionalStack",
                                                 TRUE_WORD),
});

bool handle(const HandlerContext& context, const std::shared_ptr<util::XmlNode>& node) {
  Jar& jar = context.record.cookieJarSettings();
  return ExtensionFrame(context, TEXTS)
      .forEachSetting(*node, CHILDREN[0], [&](const Setting& setting) {
        logKeyValue(SITE, setting);
        KEYS.applyOrReport(jar, setting);
      });
}

}  // namespace

extern const KnownElement COOKIE_JAR;
const KnownElement COOKIE_JAR = {
    {"cookiejar", true, Repetition::ADDS, {}, {}, {}, CHILDREN, KEYS.descriptions()}, handle};

}  // namespace detail

bool NimbrelConfigParser::processCookieJar(const std::shared_ptr<util::XmlNode>& node) {
  return processExtension(node, detail::COOKIE_JAR);
}

}  // namespace orvane::nimbrel::config
