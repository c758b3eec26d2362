#include "config/handlers/KeyTable.h"

namespace orvane::nimbrel::config::detail {
namespace cookie_jar {

using Jar = Config::CookieJarSettings;

constexpr ErrorTexts TEXTS = {"tavlo:cookiejar is missing tavlo:asset element ",
                              "tavlo:cookie, missing attributes for tavlo:asset element"};
// The name that this handler had in the lines that hosts already filter by.
constexpr const char* SITE = "XmlConfigParser::processCookieJar";

constexpr ChildDescription CHILDREN[] = {{"asset", KEY_AND_VALUE, "key"}};

constexpr KeyTable KEYS({
    raises<&Jar::persistent, TRUE_WORD>("persistent"),
    raises<&Jar::usePrivateCookies, TRUE_WORD>("usePrivateCookies"),
    raises<&Jar::useDeviceCookies, TRUE_WORD>("useDeviceCookies"),
    raises<&Jar::useAuthCookies, TRUE_WORD>("useAuthCookies"),
    raises<&Jar::useAccessToken, TRUE_WORD>("useAccessToken"),
    raises<&Jar::useAuthCookiesForRegionalStack, TRUE_WORD>("useAuthCookiesForRegionalStack"),
});

static bool handle(HandlerContext& context, const Node& node) {
  Jar& jar = context.record.cookieJarSettings();
  return forEachSetting(context, *node, CHILDREN[0], TEXTS, [&](const Setting& setting) {
    logKeyValue(SITE, setting);
    KEYS.applyOrReport(jar, setting);
  });
}

}  // namespace cookie_jar

const KnownElement COOKIE_JAR =
    extensionElement("cookiejar", Repetition::ADDS, cookie_jar::handle, "cookieJarSettings",
                     cookie_jar::CHILDREN, cookie_jar::KEYS);

}  // namespace orvane::nimbrel::config::detail
