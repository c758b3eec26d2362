#pragma once

#include <tuple>

#include "config/Config.h"
#include "util/LocalizableString.h"

namespace orvane::nimbrel::tools {

/// A member of one of the record's structures, under the name by which the tool prints it.
template <typename Record, typename Value>
struct Field {
  const char* name;
  Value Record::*member;
};
template <typename Record, typename Value>
Field(const char*, Value Record::*) -> Field<Record, Value>;

/// Calls `visit(field)` for each field of a table, in order.
template <typename Table, typename Visit>
void forEachField(const Table& table, Visit&& visit) {
  std::apply([&](const auto&... field) { (visit(field), ...); }, table);
}

inline constexpr std::tuple AUTHOR_FIELDS{
    Field{"name", &config::Config::Author::name},
    Field{"href", &config::Config::Author::href},
    Field{"email", &config::Config::Author::email},
};

inline constexpr std::tuple FEATURE_FIELDS{
    Field{"name", &config::Config::Feature::name},
    Field{"required", &config::Config::Feature::required},
    Field{"params", &config::Config::Feature::params},
};

inline constexpr std::tuple ICON_FIELDS{
    Field{"src", &config::Config::Icon::src},
    Field{"height", &config::Config::Icon::height},
    Field{"width", &config::Config::Icon::width},
};

inline constexpr std::tuple START_FILE_FIELDS{
    Field{"src", &config::Config::StartFile::src},
    Field{"encoding", &config::Config::StartFile::encoding},
    Field{"type", &config::Config::StartFile::type},
};

inline constexpr std::tuple LICENSE_FIELDS{
    Field{"text", &config::Config::License::text},
    Field{"file", &config::Config::License::file},
    Field{"href", &config::Config::License::href},
};

inline constexpr std::tuple PREFERENCE_FIELDS{
    Field{"name", &config::Config::Preference::name},
    Field{"value", &config::Config::Preference::value},
    Field{"readonly", &config::Config::Preference::readonly},
};

inline constexpr std::tuple GESTURE_MEMBERS{
    Field{"enabled", &config::Config::Gesture::enabled},
    Field{"properties", &config::Config::Gesture::properties},
};

inline constexpr std::tuple COOKIE_JAR_FIELDS{
    Field{"persistent", &config::Config::CookieJarSettings::persistent},
    Field{"usePrivateCookies", &config::Config::CookieJarSettings::usePrivateCookies},
    Field{"useDeviceCookies", &config::Config::CookieJarSettings::useDeviceCookies},
    Field{"useAuthCookies", &config::Config::CookieJarSettings::useAuthCookies},
    Field{"useAccessToken", &config::Config::CookieJarSettings::useAccessToken},
    Field{"useAuthCookiesForRegionalStack",
          &config::Config::CookieJarSettings::useAuthCookiesForRegionalStack},
};

inline constexpr std::tuple NET_FIELDS{
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

inline constexpr std::tuple GESTURE_FIELDS{
    Field{"flick", &config::Config::GestureSettings::flick},
    Field{"swipe", &config::Config::GestureSettings::swipe},
    Field{"drag", &config::Config::GestureSettings::drag},
    Field{"pinchzoom", &config::Config::GestureSettings::pinchzoom},
    Field{"tap", &config::Config::GestureSettings::tap},
    Field{"multi_tap", &config::Config::GestureSettings::multi_tap},
    Field{"hold", &config::Config::GestureSettings::hold},
};

// Without the reserved flag, which no document sets.
inline constexpr std::tuple APP_FIELDS{
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

inline constexpr std::tuple LOCAL_RESOURCES_FIELDS{
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

/// The table of a structure.
constexpr const auto& fieldsOf(const config::Config::Author& /*record*/) noexcept {
  return AUTHOR_FIELDS;
}
constexpr const auto& fieldsOf(const config::Config::Feature& /*record*/) noexcept {
  return FEATURE_FIELDS;
}
constexpr const auto& fieldsOf(const config::Config::Icon& /*record*/) noexcept {
  return ICON_FIELDS;
}
constexpr const auto& fieldsOf(const config::Config::StartFile& /*record*/) noexcept {
  return START_FILE_FIELDS;
}
constexpr const auto& fieldsOf(const config::Config::License& /*record*/) noexcept {
  return LICENSE_FIELDS;
}
constexpr const auto& fieldsOf(const config::Config::Preference& /*record*/) noexcept {
  return PREFERENCE_FIELDS;
}
constexpr const auto& fieldsOf(const config::Config::Gesture& /*record*/) noexcept {
  return GESTURE_MEMBERS;
}
constexpr const auto& fieldsOf(const config::Config::CookieJarSettings& /*record*/) noexcept {
  return COOKIE_JAR_FIELDS;
}
constexpr const auto& fieldsOf(const config::Config::NetSettings& /*record*/) noexcept {
  return NET_FIELDS;
}
constexpr const auto& fieldsOf(const config::Config::GestureSettings& /*record*/) noexcept {
  return GESTURE_FIELDS;
}
constexpr const auto& fieldsOf(const config::Config::AppSettings& /*record*/) noexcept {
  return APP_FIELDS;
}
constexpr const auto& fieldsOf(const config::Config::LocalResources& /*record*/) noexcept {
  return LOCAL_RESOURCES_FIELDS;
}

/// "ltr", "rtl", "lro" or "rlo".
inline const char* directionName(util::LocalizableString::Direction direction) noexcept {
  constexpr const char* NAMES[] = {"ltr", "rtl", "lro", "rlo"};
  return NAMES[direction];
}

}  // namespace orvane::nimbrel::tools
