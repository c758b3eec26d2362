#pragma once

#include <functional>
#include <tuple>
#include <type_traits>

#include "config/Config.h"
#include "util/LocalizableString.h"

namespace orvane::nimbrel::tools {

/// What the record or one of its structures holds, under the name by which the tool prints it.
template <typename Record, typename Member>
struct Field {
  const char* name;
  Member Record::*member;  // or the function that reads it
};
template <typename Record, typename Member>
Field(const char*, Member Record::*) -> Field<Record, Member>;

/// A field that is a section of its own in the text, behind those that RecordText.cpp names.
template <typename Record, typename Member>
struct Section {
  const char* name;
  Member Record::*member;
  const char* title;
};
template <typename Record, typename Member>
Section(const char*, Member Record::*, const char*) -> Section<Record, Member>;

/// The fields of a structure in the order in which they are printed; null for any other type.
template <typename Record>
inline constexpr auto FIELDS = nullptr;

template <typename Record>
inline constexpr bool HAS_FIELDS = !std::is_null_pointer_v<decltype(FIELDS<Record>)>;

/// Calls `visit(field, value)` for each field of a record or structure, in order.
template <typename Record, typename Visit>
void forEachField(const Record& record, Visit&& visit) {
  std::apply([&](const auto&... field) { (visit(field, std::invoke(field.member, record)), ...); },
             FIELDS<Record>);
}

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

template <>
inline constexpr auto FIELDS<config::Config> = std::tuple{
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
    Section{"gestureSettings", &config::Config::getGestureSettings, "Gestures"},
    Section{"appPermissions", &config::Config::getAppPermissions, "Permissions"},
    Field{"chromeSettings", &config::Config::getChromeSettings},
    Field{"appSettings", &config::Config::getAppSettings},
    Section{"messagingPermissions", &config::Config::getMessagingPermissions, "Messaging"},
    Section{"localResources", &config::Config::getLocalResources, "Local resources"},
    Section{"exports", &config::Config::getExports, "Exports"},
};

/// "ltr", "rtl", "lro" or "rlo".
inline const char* directionName(util::LocalizableString::Direction direction) noexcept {
  constexpr const char* NAMES[] = {"ltr", "rtl", "lro", "rlo"};
  return NAMES[direction];
}

}  // namespace orvane::nimbrel::tools
