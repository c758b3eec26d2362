#include "config/ElementDescription.h"

namespace orvane::nimbrel::config {
namespace {

using Kind = ValueKind;
using Rule = KeyRule;

constexpr AttributeDescription WIDGET_ATTRIBUTES[] = {
    {"id", Kind::IRI, false, "id"},
    {"version", Kind::TEXT, false, "version"},
    {"width", Kind::SIZE, false, "width"},
    {"height", Kind::SIZE, false, "height"},
    {"viewmodes", Kind::KEYWORDS, false, "windowModes[]"},
    {"defaultlocale", Kind::LANGUAGE, false, "userAgentLocales[]"},
    {"applicationId", Kind::APPLICATION_ID, false, "tavloApplicationId", true},
    {"applicationVersion", Kind::NUMBER, false, "tavloApplicationVersion", true},
};
constexpr ElementDescription WIDGET = {
    "widget", false, Repetition::FIRST_COUNTS, {}, WIDGET_ATTRIBUTES};

constexpr AttributeDescription NAME_ATTRIBUTES[] = {{"short", Kind::TEXT, false, "shortName"}};
constexpr ElementDescription NAME = {"name", false,           Repetition::FIRST_COUNTS,
                                     {},     NAME_ATTRIBUTES, "name"};

constexpr ElementDescription DESCRIPTION = {"description", false, Repetition::FIRST_COUNTS, {}, {},
                                            "description"};

constexpr AttributeDescription LICENSE_ATTRIBUTES[] = {{"href", Kind::IRI, false, "license.href"}};
constexpr ElementDescription LICENSE = {
    "license", false, Repetition::FIRST_COUNTS, {}, LICENSE_ATTRIBUTES, "license.text"};

constexpr AttributeDescription ICON_ATTRIBUTES[] = {
    {"src", Kind::PATH, true, "icons[].src"},
    {"width", Kind::SIZE, false, "icons[].width"},
    {"height", Kind::SIZE, false, "icons[].height"},
};
constexpr ElementDescription ICON = {"icon", false, Repetition::UNIQUE_BY, "src", ICON_ATTRIBUTES};

constexpr AttributeDescription AUTHOR_ATTRIBUTES[] = {
    {"href", Kind::IRI, false, "author.href"},
    {"email", Kind::TEXT, false, "author.email"},
};
constexpr ElementDescription AUTHOR = {
    "author", false, Repetition::FIRST_COUNTS, {}, AUTHOR_ATTRIBUTES, "author.name"};

constexpr AttributeDescription PREFERENCE_ATTRIBUTES[] = {
    {"name", Kind::TEXT, true, "preferences[].name"},
    {"value", Kind::TEXT, false, "preferences[].value"},
    {"readonly", Kind::BOOLEAN, false, "preferences[].readonly"},
};
constexpr ElementDescription PREFERENCE = {"preference", false, Repetition::UNIQUE_BY, "name",
                                           PREFERENCE_ATTRIBUTES};

constexpr AttributeDescription CONTENT_ATTRIBUTES[] = {
    {"src", Kind::PATH, true, "startFile.src"},
    {"encoding", Kind::ENCODING, false, "startFile.encoding"},
    {"type", Kind::MEDIA_TYPE, false, "startFile.type"},
};
constexpr ElementDescription CONTENT = {
    "content", false, Repetition::FIRST_COUNTS, {}, CONTENT_ATTRIBUTES};

constexpr AttributeDescription PARAM_ATTRIBUTES[] = {
    {"name", Kind::TEXT, true, "features[].params[].name"},
    {"value", Kind::TEXT, true, "features[].params[].value"},
};
constexpr ChildDescription FEATURE_CHILDREN[] = {{"param", PARAM_ATTRIBUTES}};
constexpr AttributeDescription FEATURE_ATTRIBUTES[] = {
    {"name", Kind::IRI, true, "features[].name"},
    {"required", Kind::BOOLEAN, false, "features[].required"},
};
constexpr ElementDescription FEATURE = {"feature",          false, Repetition::ADDS, {},
                                        FEATURE_ATTRIBUTES, {},    FEATURE_CHILDREN};

constexpr AttributeDescription ACCESS_ATTRIBUTES[] = {
    {"origin", Kind::ORIGIN, true, "accessRequestList[]"},
    {"subdomains", Kind::BOOLEAN, false, "accessRequestList[].subdomains"},
};
constexpr ElementDescription ACCESS = {"access", false, Repetition::ADDS, {}, ACCESS_ATTRIBUTES};

// What most extension elements ask of a child.
constexpr AttributeDescription KEY_AND_VALUE[] = {{"key", Kind::TEXT, true},
                                                  {"value", Kind::TEXT, true}};
constexpr AttributeDescription NAME_AND_VALUE[] = {{"name", Kind::TEXT, true},
                                                   {"value", Kind::TEXT, true}};
constexpr ChildDescription ASSETS[] = {{"asset", KEY_AND_VALUE, "key"}};

constexpr SwitchWords ON_TRUE = {{"true", "true"}, {"false", "false"}};
constexpr SwitchWords ON_YES = {{"yes", "yes"}, {"no", "no"}};
constexpr SwitchWords ON_NO = {{"no", "no"}, {"yes", "yes"}};

constexpr KeyDescription COOKIE_KEYS[] = {
    {"persistent", Kind::SWITCH, Rule::ONLY_RAISED, "cookieJarSettings.persistent", &ON_TRUE},
    {"usePrivateCookies", Kind::SWITCH, Rule::ONLY_RAISED, "cookieJarSettings.usePrivateCookies",
     &ON_TRUE},
    {"useDeviceCookies", Kind::SWITCH, Rule::ONLY_RAISED, "cookieJarSettings.useDeviceCookies",
     &ON_TRUE},
    {"useAuthCookies", Kind::SWITCH, Rule::ONLY_RAISED, "cookieJarSettings.useAuthCookies",
     &ON_TRUE},
    {"useAccessToken", Kind::SWITCH, Rule::ONLY_RAISED, "cookieJarSettings.useAccessToken",
     &ON_TRUE},
    {"useAuthCookiesForRegionalStack", Kind::SWITCH, Rule::ONLY_RAISED,
     "cookieJarSettings.useAuthCookiesForRegionalStack", &ON_TRUE},
};
constexpr ElementDescription COOKIE_JAR = {"cookiejar", true, Repetition::ADDS, {},
                                           {},          {},   ASSETS,           COOKIE_KEYS};

constexpr SwitchWords ON_TOKEN = {{"token", "token"}, {}};
constexpr KeyDescription ANY_AUTH_KEY = {
    {}, Kind::SWITCH, Rule::ONLY_RAISED, "orvnAuthMode", &ON_TOKEN};
constexpr ElementDescription AUTH = {"auth", true, Repetition::ADDS, {}, {}, {},
                                     ASSETS, {},   &ANY_AUTH_KEY};

constexpr AttributeDescription ERROR_PAGE_ATTRIBUTES[] = {
    {"src", Kind::PATH, true, "netSettings.errorPage"}};
constexpr ChildDescription NETWORK_CHILDREN[] = {{"asset", KEY_AND_VALUE, "key"},
                                                 {"errorPage", ERROR_PAGE_ATTRIBUTES}};
constexpr KeyDescription NETWORK_KEYS[] = {
    {"user-agent", Kind::TEXT, Rule::ACCUMULATES, "netSettings.userAgents[]"},
    {"http-header", Kind::TEXT, Rule::ACCUMULATES, "netSettings.httpHeaders[]"},
    {"idleConnectionsTimeout_sec", Kind::NUMBER, Rule::LAST_COUNTS,
     "netSettings.idleConnectionsTimeout_sec"},
    {"maxConnections", Kind::NUMBER, Rule::LAST_COUNTS, "netSettings.maxConnections"},
    {"maxConnectionsPerHost", Kind::NUMBER, Rule::LAST_COUNTS, "netSettings.maxConnectionsPerHost"},
    {"maxConnectionsPerProxy", Kind::NUMBER, Rule::LAST_COUNTS,
     "netSettings.maxConnectionsPerProxy"},
    {"maxKeepAliveProxyConnections", Kind::NUMBER, Rule::LAST_COUNTS,
     "netSettings.maxKeepAliveProxyConnections"},
    {"initialDNS", Kind::SWITCH, Rule::LAST_COUNTS, "netSettings.initialDNS", &ON_TRUE},
    {"overrideProxy", Kind::TEXT, Rule::LAST_COUNTS, "netSettings.overrideProxy"},
    {"enableCaching", Kind::SWITCH, Rule::LAST_COUNTS, "netSettings.enableCaching", &ON_TRUE},
    {"enableWrsProxy", Kind::SWITCH, Rule::LAST_COUNTS, "netSettings.enableWrsProxy", &ON_TRUE},
    {"allowTlsFallback", Kind::SWITCH, Rule::LAST_COUNTS, "netSettings.allowTlsFallback", &ON_TRUE},
};
constexpr ElementDescription NETWORK = {"network", true, Repetition::ADDS, {},
                                        {},        {},   NETWORK_CHILDREN, NETWORK_KEYS};

constexpr AttributeDescription GESTURE_ATTRIBUTES[] = {
    {"name", Kind::TEXT, true},
    {"value", Kind::TEXT, true},
    {"properties", Kind::TEXT, false, "gestureSettings.*.properties"}};
constexpr ChildDescription GESTURE_CHILDREN[] = {{"param", GESTURE_ATTRIBUTES, "name"}};
constexpr KeyDescription GESTURE_KEYS[] = {
    {"pinchzoom", Kind::SWITCH, Rule::ONLY_RAISED, "gestureSettings.pinchzoom.enabled", &ON_YES},
    {"flick", Kind::SWITCH, Rule::ONLY_RAISED, "gestureSettings.flick.enabled", &ON_YES},
    {"drag", Kind::SWITCH, Rule::ONLY_RAISED, "gestureSettings.drag.enabled", &ON_YES},
    {"swipe", Kind::SWITCH, Rule::ONLY_RAISED, "gestureSettings.swipe.enabled", &ON_YES},
    {"tap", Kind::SWITCH, Rule::ONLY_RAISED, "gestureSettings.tap.enabled", &ON_YES},
    {"multi_tap", Kind::SWITCH, Rule::ONLY_RAISED, "gestureSettings.multi_tap.enabled", &ON_YES},
    {"hold", Kind::SWITCH, Rule::ONLY_RAISED, "gestureSettings.hold.enabled", &ON_YES},
};
constexpr ElementDescription GESTURES = {"gestures", true, Repetition::RESTARTS, {},
                                         {},         {},   GESTURE_CHILDREN,     GESTURE_KEYS};

constexpr AttributeDescription PERMISSION_ATTRIBUTES[] = {{"name", Kind::TEXT, true},
                                                          {"value", Kind::TEXT}};
constexpr ChildDescription PERMISSIONS_CHILDREN[] = {{"permission", PERMISSION_ATTRIBUTES, "name"}};
constexpr SwitchWords REVOKING = {{"no", "false"}, {"yes", "true"}};
constexpr KeyDescription ANY_PERMISSION = {
    {}, Kind::SWITCH, Rule::LAST_COUNTS, "appPermissions.*", &REVOKING};
constexpr ElementDescription PERMISSIONS = {
    "permissions", true, Repetition::ADDS, {}, {}, {}, PERMISSIONS_CHILDREN, {}, &ANY_PERMISSION};

constexpr KeyDescription CHROME_KEYS[] = {
    {"configureSearchBar", Kind::TEXT, Rule::LAST_COUNTS, "chromeSettings"}};
constexpr ElementDescription CHROME = {"chrome", true,   Repetition::RESTARTS, {}, {},
                                       {},       ASSETS, CHROME_KEYS};

constexpr ChildDescription SETTINGS_CHILDREN[] = {{"setting", NAME_AND_VALUE, "name"}};
constexpr KeyDescription SETTINGS_KEYS[] = {
    {"internetRequired", Kind::SWITCH, Rule::ONLY_RAISED, "appSettings.internetRequired", &ON_YES},
    {"screenReaderSupported", Kind::SWITCH, Rule::ONLY_RAISED, "appSettings.screenReaderSupported",
     &ON_YES},
    {"pelloWebViewParserSupported", Kind::SWITCH, Rule::ONLY_RAISED,
     "appSettings.pelloWebViewParserSupported", &ON_YES},
    {"saveContext", Kind::SWITCH, Rule::ONLY_RAISED, "appSettings.saveContext", &ON_NO},
    {"debug", Kind::SWITCH, Rule::ONLY_RAISED, "appSettings.debug", &ON_YES},
    {"enforce96DPI", Kind::SWITCH, Rule::ONLY_RAISED, "appSettings.enforce96DPI", &ON_YES},
    {"flattenFrames", Kind::SWITCH, Rule::ONLY_RAISED, "appSettings.flattenFrames", &ON_YES},
    {"defaultFontSize", Kind::INTEGER, Rule::LAST_COUNTS, "appSettings.defaultFontSize", nullptr,
     true},
    {"minimumFontSize", Kind::INTEGER, Rule::LAST_COUNTS, "appSettings.minimumFontSize"},
    {"zoomFactor", Kind::DECIMAL, Rule::LAST_COUNTS, "appSettings.zoomFactor"},
    {"disable-zel-features", Kind::SWITCH, Rule::ONLY_RAISED, "appSettings.disableZelFeatures",
     &ON_YES},
    {"enableW3CStd", Kind::SWITCH, Rule::ONLY_RAISED, "appSettings.enableW3CStd", &ON_YES},
    {"inspector", Kind::SWITCH, Rule::ONLY_RAISED, "appSettings.inspector", &ON_YES},
};
constexpr ElementDescription SETTINGS = {"settings", true, Repetition::ADDS,  {},
                                         {},         {},   SETTINGS_CHILDREN, SETTINGS_KEYS};

constexpr ChildDescription MESSAGING_CHILDREN[] = {{"app", NAME_AND_VALUE, "name"}};
constexpr SwitchWords GRANTING = {{"yes", "true"}, {"no", "false"}};
constexpr KeyDescription ANY_APP = {
    {}, Kind::SWITCH, Rule::LAST_COUNTS, "messagingPermissions.*", &GRANTING};
constexpr ElementDescription MESSAGING = {"messaging",        true, Repetition::ADDS, {}, {}, {},
                                          MESSAGING_CHILDREN, {},   &ANY_APP};

constexpr SwitchWords ON_TRUE_OR_YES = {{"true", "yes"}, {"false", "no"}};
constexpr KeyDescription RESOURCES_KEYS[] = {
    {"LocalStorageQuota", Kind::NUMBER, Rule::LAST_COUNTS, "localResources.localStorageQuota"},
    {"LocalStoragePath", Kind::PATH, Rule::LAST_COUNTS, "localResources.localStoragePath"},
    {"DatabaseStorage", Kind::SWITCH, Rule::LAST_COUNTS, "localResources.databaseStorage",
     &ON_TRUE_OR_YES},
    {"DatabaseStorageQuota", Kind::NUMBER, Rule::LAST_COUNTS,
     "localResources.databaseStorageQuota"},
    {"DatabaseStoragePath", Kind::PATH, Rule::LAST_COUNTS, "localResources.databaseStoragePath"},
    {"ApplicationCachePath", Kind::PATH, Rule::LAST_COUNTS, "localResources.applicationCachePath"},
    {"AllowHTTPSApplicationManifestCrossDomain", Kind::SWITCH, Rule::LAST_COUNTS,
     "localResources.allowHTTPSApplicationManifestCrossDomain", &ON_TRUE},
    {"ApplicationCacheQuota", Kind::NUMBER, Rule::LAST_COUNTS,
     "localResources.applicationCacheQuota"},
    {"ApplicationCacheLoadDelay", Kind::DECIMAL, Rule::LAST_COUNTS,
     "localResources.applicationCacheLoadDelay"},
};
constexpr KeyDescription ANY_RESOURCE = {
    {}, Kind::TEXT, Rule::LAST_COUNTS, "localResources.otherSettings.*"};
constexpr ElementDescription RESOURCES = {"resources", true,   Repetition::ADDS, {},           {},
                                          {},          ASSETS, RESOURCES_KEYS,   &ANY_RESOURCE};

constexpr AttributeDescription EXPORT_ATTRIBUTES[] = {{"resource", Kind::PATH, true, "exports[]"}};
constexpr ElementDescription EXPORT = {"export", true, Repetition::UNIQUE_BY, "resource",
                                       EXPORT_ATTRIBUTES};

constexpr const ElementDescription* ELEMENTS[] = {
    &NAME,    &DESCRIPTION, &LICENSE,    &ICON,      &AUTHOR,  &PREFERENCE, &CONTENT,
    &FEATURE, &ACCESS,      &COOKIE_JAR, &AUTH,      &NETWORK, &GESTURES,   &PERMISSIONS,
    &CHROME,  &SETTINGS,    &MESSAGING,  &RESOURCES, &EXPORT,
};

}  // namespace

DescriptionList<const ElementDescription*> elementDescriptions() noexcept {
  return ELEMENTS;
}

const ElementDescription& widgetDescription() noexcept {
  return WIDGET;
}

}  // namespace orvane::nimbrel::config
