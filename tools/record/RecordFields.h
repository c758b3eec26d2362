#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "config/BasicConfig.h"
#include "util/LocalizableString.h"
#include "util/Option.h"

namespace orvane::nimbrel::tools {

/// What the record or one of its structures holds, under the name by which the tool prints it.
template <typename Member>
struct Field {
  const char* name;
  Member member;  // or the function that reads it
};
template <typename Member>
Field(const char*, Member) -> Field<Member>;

/// The fields of a structure in the order in which they are printed; null for any other type.
template <typename Record>
inline constexpr auto FIELDS = nullptr;

template <typename Record>
inline constexpr bool HAS_FIELDS = !std::is_null_pointer_v<decltype(FIELDS<Record>)>;

// The other values that are made of values. What is none of these is a text, a number or a switch.
template <typename Value>
inline constexpr bool IS_OPTION = false;
template <typename Value>
inline constexpr bool IS_OPTION<util::Option<Value>> = true;
template <typename Value>
inline constexpr bool IS_LIST = false;
template <typename Value>
inline constexpr bool IS_LIST<std::vector<Value>> = true;
template <typename Value>
inline constexpr bool IS_MAP = false;
template <typename Value>
inline constexpr bool IS_MAP<std::map<std::string, Value>> = true;

/// Calls `visit(field, value)` for each field of a record or structure, in order.
template <typename Record, typename Visit>
void forEachField(const Record& record, Visit&& visit) {
  std::apply([&](const auto&... field) { (visit(field, std::invoke(field.member, record)), ...); },
             FIELDS<Record>);
}

/// "ltr", "rtl", "lro" or "rlo".
inline const char* directionName(util::LocalizableString::Direction direction) noexcept {
  constexpr const char* NAMES[] = {"ltr", "rtl", "lro", "rlo"};
  return NAMES[direction];
}

template <>
inline constexpr auto FIELDS<util::LocalizableString::TextNode> = std::tuple{
    Field{"text", &util::LocalizableString::TextNode::text},
    Field{"language", &util::LocalizableString::TextNode::languageTag},
    Field{"direction", [](const auto& run) { return directionName(run.direction); }},
};

template <>
inline constexpr auto FIELDS<util::LocalizableString> = std::tuple{
    Field{"text", &util::LocalizableString::c_str},
    Field{"language", &util::LocalizableString::getLanguageTag},
    Field{"direction", [](const auto& text) { return directionName(text.getDirection()); }},
    Field{"runs", &util::LocalizableString::getTextNodes},
};

template <>
inline constexpr auto FIELDS<std::pair<std::string, std::string>> = std::tuple{
    Field{"name", &std::pair<std::string, std::string>::first},
    Field{"value", &std::pair<std::string, std::string>::second},
};

template <>
inline constexpr auto FIELDS<config::Config::Author> = std::tuple{
    Field{"name", &config::Config::Author::name},
    Field{"href", &config::Config::Author::href},
    Field{"email", &config::Config::Author::email},
};

template <>
inline constexpr auto FIELDS<config::Config::Feature> = std::tuple{
    Field{"name", &config::Config::Feature::name},
    Field{"required", &config::Config::Feature::required},
    Field{"params", &config::Config::Feature::params},
};

template <>
inline constexpr auto FIELDS<config::Config::Icon> = std::tuple{
    Field{"src", &config::Config::Icon::src},
    Field{"height", &config::Config::Icon::height},
    Field{"width", &config::Config::Icon::width},
};

template <>
inline constexpr auto FIELDS<config::Config::StartFile> = std::tuple{
    Field{"src", &config::Config::StartFile::src},
    Field{"encoding", &config::Config::StartFile::encoding},
    Field{"type", &config::Config::StartFile::type},
};

template <>
inline constexpr auto FIELDS<config::Config::License> = std::tuple{
    Field{"text", &config::Config::License::text},
    Field{"file", &config::Config::License::file},
    Field{"href", &config::Config::License::href},
};

template <>
inline constexpr auto FIELDS<config::Config::Preference> = std::tuple{
    Field{"name", &config::Config::Preference::name},
    Field{"value", &config::Config::Preference::value},
    Field{"readonly", &config::Config::Preference::readonly},
};

template <>
inline constexpr auto FIELDS<config::Config::Gesture> = std::tuple{
    Field{"enabled", &config::Config::Gesture::enabled},
    Field{"properties", &config::Config::Gesture::properties},
};

template <>
inline constexpr auto FIELDS<config::Config::AccessRequest> = std::tuple{
    Field{"allOrigins", [](const auto& request) { return request.allOrigins != 0; }},
    Field{"scheme", &config::Config::AccessRequest::scheme},
    Field{"host", &config::Config::AccessRequest::host},
    Field{"port", &config::Config::AccessRequest::port},
    Field{"subdomains", &config::Config::AccessRequest::subdomains},
};

template <>
inline constexpr auto FIELDS<config::Config::CookieJarSettings> = std::tuple{
    Field{"persistent", &config::Config::CookieJarSettings::persistent},
    Field{"usePrivateCookies", &config::Config::CookieJarSettings::usePrivateCookies},
    Field{"useDeviceCookies", &config::Config::CookieJarSettings::useDeviceCookies},
    Field{"useAuthCookies", &config::Config::CookieJarSettings::useAuthCookies},
    Field{"useAccessToken", &config::Config::CookieJarSettings::useAccessToken},
    Field{"useAuthCookiesForRegionalStack",
          &config::Config::CookieJarSettings::useAuthCookiesForRegionalStack},
};

template <>
inline constexpr auto FIELDS<config::Config::NetSettings> = std::tuple{
    Field{"userAgents", &config::Config::NetSettings::userAgents},
    Field{"httpHeaders", &config::Config::NetSettings::httpHeaders},
    Field{"errorPage", &config::Config::NetSettings::errorPage},
    Field{"overrideProxy", &config::Config::NetSettings::overrideProxy},
    Field{"idleConnectionsTimeout_sec", &config::Config::NetSettings::idleConnectionsTimeout_sec},
    Field{"maxConnectionsPerHost", &config::Config::NetSettings::maxConnectionsPerHost},
    Field{"maxConnections", &config::Config::NetSettings::maxConnections},
    Field{"maxConnectionsPerProxy", &config::Config::NetSettings::maxConnectionsPerProxy},
    Field{"maxKeepAliveProxyConnections",
          &config::Config::NetSettings::maxKeepAliveProxyConnections},
    Field{"initialDNS", &config::Config::NetSettings::initialDNS},
    Field{"enableCaching", &config::Config::NetSettings::enableCaching},
    Field{"enableWrsProxy", &config::Config::NetSettings::enableWrsProxy},
    Field{"allowTlsFallback", &config::Config::NetSettings::allowTlsFallback},
};

template <>
inline constexpr auto FIELDS<config::Config::GestureSettings> = std::tuple{
    Field{"flick", &config::Config::GestureSettings::flick},
    Field{"swipe", &config::Config::GestureSettings::swipe},
    Field{"drag", &config::Config::GestureSettings::drag},
    Field{"pinchzoom", &config::Config::GestureSettings::pinchzoom},
    Field{"tap", &config::Config::GestureSettings::tap},
    Field{"multi_tap", &config::Config::GestureSettings::multi_tap},
    Field{"hold", &config::Config::GestureSettings::hold},
};

// Without the reserved flag, which no document sets.
template <>
inline constexpr auto FIELDS<config::Config::AppSettings> = std::tuple{
    Field{"internetRequired", &config::Config::AppSettings::internetRequired},
    Field{"defaultFontSize", &config::Config::AppSettings::defaultFontSize},
    Field{"minimumFontSize", &config::Config::AppSettings::minimumFontSize},
    Field{"enforce96DPI", &config::Config::AppSettings::enforce96DPI},
    Field{"flattenFrames", &config::Config::AppSettings::flattenFrames},
    Field{"zoomFactor", &config::Config::AppSettings::zoomFactor},
    Field{"saveContext", &config::Config::AppSettings::saveContext},
    Field{"debug", &config::Config::AppSettings::debug},
    Field{"enableW3CStd", &config::Config::AppSettings::enableW3CStd},
    Field{"disableZelFeatures", &config::Config::AppSettings::disableZelFeatures},
    Field{"inspector", &config::Config::AppSettings::inspector},
    Field{"screenReaderSupported", &config::Config::AppSettings::screenReaderSupported},
    Field{"pelloWebViewParserSupported", &config::Config::AppSettings::pelloWebViewParserSupported},
};

template <>
inline constexpr auto FIELDS<config::Config::LocalResources> = std::tuple{
    Field{"otherSettings", &config::Config::LocalResources::otherSettings},
    Field{"localStorageQuota", &config::Config::LocalResources::localStorageQuota},
    Field{"localStoragePath", &config::Config::LocalResources::localStoragePath},
    Field{"databaseStorage", &config::Config::LocalResources::databaseStorage},
    Field{"databaseStorageQuota", &config::Config::LocalResources::databaseStorageQuota},
    Field{"databaseStoragePath", &config::Config::LocalResources::databaseStoragePath},
    Field{"applicationCachePath", &config::Config::LocalResources::applicationCachePath},
    Field{"applicationCacheQuota", &config::Config::LocalResources::applicationCacheQuota},
    Field{"applicationCacheLoadDelay", &config::Config::LocalResources::applicationCacheLoadDelay},
    Field{"allowHTTPSApplicationManifestCrossDomain",
          &config::Config::LocalResources::allowHTTPSApplicationManifestCrossDomain},
};

/// The paths of all exports, each once, sorted.
inline std::vector<std::string> exportedPaths(const config::Config& config) {
  std::set<std::string> paths;
  for (const auto& entry : config.getExports()) {
    paths.insert(entry.second.resourcePath);
  }
  return {paths.begin(), paths.end()};
}

/// A namespace of more bytes, which many elements may have, is printed once.
inline constexpr std::size_t LONG_NAMESPACE = 256;

/// None for an element without one.
inline util::Option<std::string_view> namespaceOf(const config::Element& element) noexcept {
  const std::string_view uri = element.getNode()->namespaceView();
  util::Option<std::string_view> found;
  if (uri.data() != nullptr) {
    found = uri;
  }
  return found;
}

template <>
inline constexpr auto FIELDS<config::Element> = std::tuple{
    // Views, for the same reason.
    Field{"name", [](const auto& element) { return element.getNode()->nameView(); }},
    Field{"namespace", namespaceOf},
};

/// All that the tool shows of a document.
struct ShownDocument {
  config::BasicConfig& record;
  std::string_view errorText;  ///< of the parser

  /// By which the members of the record are fields of this.
  [[nodiscard]] config::BasicConfig& operator*() const noexcept { return record; }
};

template <>
inline constexpr auto FIELDS<ShownDocument> = std::tuple{
    Field{"author", &config::Config::getAuthor},
    Field{"features", &config::Config::getFeatures},
    Field{"icons", &config::Config::getIcons},
    Field{"startFile", &config::Config::getStartFile},
    Field{"description", &config::Config::getDescription},
    Field{"height", &config::Config::getHeight},
    Field{"width", &config::Config::getWidth},
    Field{"id", &config::Config::getId},
    Field{"license", &config::Config::getLicense},
    Field{"name", &config::Config::getName},
    Field{"preferences", &config::Config::getPreferences},
    Field{"shortName", &config::Config::getShortName},
    Field{"windowModes", &config::Config::getWindowModes},
    Field{"userAgentLocales", &config::Config::getUserAgentLocales},
    Field{"version", &config::Config::getVersion},
    Field{"tavloApplicationId", &config::Config::getTavloApplicationId},
    Field{"tavloApplicationVersion", &config::Config::getTavloApplicationVersion},
    Field{"accessRequestList", &config::Config::getAccessRequestList},
    Field{"cookieJarSettings", &config::Config::getCookieJarSettings},
    Field{"orvnAuthMode", &config::Config::getOrvnAuthMode},
    Field{"netSettings", &config::Config::getNetSettings},
    Field{"gestureSettings", &config::Config::getGestureSettings},
    Field{"appPermissions", &config::Config::getAppPermissions},
    Field{"chromeSettings", &config::Config::getChromeSettings},
    Field{"appSettings", &config::Config::getAppSettings},
    Field{"messagingPermissions", &config::Config::getMessagingPermissions},
    Field{"localResources", &config::Config::getLocalResources},
    Field{"exports", [](const auto& shown) { return exportedPaths(*shown); }},
    Field{"elements", &config::BasicConfig::elements},
    Field{"errorText", &ShownDocument::errorText},
};

}  // namespace orvane::nimbrel::tools
