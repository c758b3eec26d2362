#include "config/FindingKind.h"

#include <iterator>

namespace orvane::nimbrel::config {
namespace {

using Code = LegacyCode;
constexpr FindingLevel NOTE = FindingLevel::NOTE;
constexpr FindingLevel WARNING = FindingLevel::WARNING;
constexpr FindingLevel ERROR = FindingLevel::ERROR;

// In the order of the codes.
constexpr FindingKind KINDS[] = {
    {Code::DOCUMENT_REFUSED, "document-refused", ERROR,
     "The document is no well-formed XML, or goes beyond a limit.",
     R"(<widget xmlns="http://www.w3.org/ns/widgets"><name>Map</widget>)",
     R"(<widget xmlns="http://www.w3.org/ns/widgets"><name>Map</name></widget>)"},
    {Code::ROOT_NOT_WIDGET, "root-not-widget", ERROR,
     "The root element is not a widget in the W3C's namespace.", R"(<widget id="urn:map"/>)",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" id="urn:map"/>)"},
    {Code::REQUIRED_FEATURE_NAME, "required-feature-name", ERROR,
     "The name of a required feature is no IRI; features are required unless they say otherwise.",
     R"(<feature name="geolocation"/>)",
     R"(<feature name="http://features.example/geolocation"/>)"},
    {Code::COUNTER_REFUSED, "counter-refused", ERROR,
     "A number of the network or of resources is empty or too large.",
     R"(<tavlo:network><tavlo:asset key="maxConnections" value=""/></tavlo:network>)",
     R"(<tavlo:network><tavlo:asset key="maxConnections" value="8"/></tavlo:network>)"},
    {Code::LANGUAGE_LOST, "language-lost", WARNING,
     "An element is in a language that the user does not ask for, and no other stands in for it.",
     R"(<name xml:lang="fr">Carte</name>)", R"(<name>Map</name>)"},
    {Code::OTHER_LANGUAGE, "other-language", NOTE,
     "An element is in a language that the user does not ask for; another stands in for it.",
     R"(<name xml:lang="fr">Carte</name> <name>Map</name>)", R"(<name>Map</name>)"},
    {Code::BETTER_LANGUAGE, "better-language", NOTE,
     "An element gives way to one in a language that the user prefers.",
     R"(<name xml:lang="en">Map</name> <name xml:lang="de">Karte</name>)",
     R"(<name xml:lang="en">Map</name>)"},
    {Code::UNKNOWN_ELEMENT, "unknown-element", WARNING,
     "Nothing reads an element of this name or namespace at this place.",
     R"(<icons src="map.png"/>)", R"(<icon src="map.png"/>)"},
    {Code::FOREIGN_ELEMENT, "foreign-element", NOTE,
     "An element of another vocabulary is kept for those who know it.",
     R"(<shop xmlns="http://shop.example/ns" price="1"/>)", ""},
    {Code::PARAM_OUTSIDE_FEATURE, "param-outside-feature", WARNING,
     "A param stands outside of a feature.", R"(<param name="interval" value="15"/>)",
     R"(<feature name="urn:f"><param name="interval" value="15"/></feature>)"},
    {Code::UNKNOWN_ATTRIBUTE, "unknown-attribute", WARNING,
     "Nothing reads an attribute of this name or namespace.",
     R"(<icon src="map.png" heigth="48"/>)", R"(<icon src="map.png" height="48"/>)"},
    {Code::UNKNOWN_DIRECTION, "unknown-direction", WARNING,
     "A \"dir\" is not one of \"ltr\", \"rtl\", \"lro\" and \"rlo\".",
     R"(<name dir="RTL">Map</name>)", R"(<name dir="rtl">Map</name>)"},
    {Code::ID_NOT_IRI, "id-not-iri", WARNING, "The id of the widget is no IRI.",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" id="map"/>)",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" id="http://maps.example/map"/>)"},
    {Code::VERSION_EMPTY, "version-empty", WARNING, "The version is empty.",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" version=" "/>)",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" version="1.0"/>)"},
    {Code::APPLICATION_ID, "application-id", WARNING,
     "The application id is not 1 to 32 lower-case ASCII letters and digits.",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" xmlns:tavlo=")" NIMBREL_EXTENSION_NAMESPACE
     R"(" tavlo:applicationId="Map-1"/>)",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" xmlns:tavlo=")" NIMBREL_EXTENSION_NAMESPACE
     R"(" tavlo:applicationId="map1"/>)"},
    {Code::NUMBER_DROPPED, "number-dropped", WARNING,
     "A number is empty, too large, or a size of 0 or without digits at its beginning.",
     R"(<icon src="map.png" width="large"/>)", R"(<icon src="map.png" width="48"/>)"},
    {Code::NUMBER_CUT, "number-cut", WARNING,
     "A number was read of a text that says more: units count for nothing.",
     R"(<icon src="map.png" width="48px"/>)", R"(<icon src="map.png" width="48"/>)"},
    {Code::REPEATED_VIEWMODE, "repeated-viewmode", NOTE, "A view mode is named twice.",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" viewmodes="floating windowed floating"/>)",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" viewmodes="floating windowed"/>)"},
    {Code::DEFAULTLOCALE_EMPTY, "defaultlocale-empty", WARNING, "The default locale is empty.",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" defaultlocale=""/>)",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" defaultlocale="en"/>)"},
    {Code::REPEATED_ELEMENT, "repeated-element", WARNING,
     "An element of which only the first counts stands twice in a language.",
     R"(<name>Map</name> <name>Atlas</name>)", R"(<name>Map</name>)"},
    {Code::HREF_NOT_IRI, "href-not-iri", WARNING,
     "The \"href\" of an author or a license is no IRI; a relative one is none.",
     R"(<license href="license.txt">Free</license>)",
     R"(<license href="http://maps.example/license.txt">Free</license>)"},
    {Code::CONTENT_WITHOUT_SRC, "content-without-src", WARNING,
     "The first content has no path, so the widget has no start file.",
     R"(<content type="text/html"/>)", R"(<content src="index.html" type="text/html"/>)"},
    {Code::ICON_WITHOUT_SRC, "icon-without-src", WARNING, "An icon has no path.",
     R"(<icon src=""/>)", R"(<icon src="map.png"/>)"},
    {Code::REPEATED_ICON, "repeated-icon", WARNING, "An icon has the path of an earlier one.",
     R"(<icon src="map.png" width="16"/> <icon src="map.png" width="48"/>)",
     R"(<icon src="map-16.png" width="16"/> <icon src="map.png" width="48"/>)"},
    {Code::PREFERENCE_WITHOUT_NAME, "preference-without-name", WARNING, "A preference has no name.",
     R"(<preference value="metric"/>)", R"(<preference name="units" value="metric"/>)"},
    {Code::REPEATED_PREFERENCE, "repeated-preference", WARNING,
     "A preference has the name of an earlier one.",
     R"(<preference name="units" value="metric"/> <preference name="units" value="imperial"/>)",
     R"(<preference name="units" value="metric"/>)"},
    {Code::NOT_BOOLEAN, "not-boolean", WARNING, "An attribute is neither \"true\" nor \"false\".",
     R"(<preference name="units" value="metric" readonly="yes"/>)",
     R"(<preference name="units" value="metric" readonly="true"/>)"},
    {Code::FEATURE_WITHOUT_NAME, "feature-without-name", WARNING, "A feature has no name.",
     R"(<feature required="false"/>)", R"(<feature name="urn:f" required="false"/>)"},
    {Code::FEATURE_NAME, "feature-name", WARNING,
     "The name of a feature that is not required is no IRI.",
     R"(<feature name="geolocation" required="false"/>)",
     R"(<feature name="http://features.example/geolocation" required="false"/>)"},
    {Code::PARAM_INCOMPLETE, "param-incomplete", WARNING, "A param has no name or no value.",
     R"(<feature name="urn:f"><param name="interval"/></feature>)",
     R"(<feature name="urn:f"><param name="interval" value="15"/></feature>)"},
    {Code::ACCESS_WITHOUT_ORIGIN, "access-without-origin", WARNING, "An access has no origin.",
     R"(<access subdomains="true"/>)", R"(<access origin="*"/>)"},
    {Code::ORIGIN_NOT_IRI, "origin-not-iri", WARNING, "An origin is neither an IRI nor \"*\".",
     R"(<access origin="maps.example"/>)", R"(<access origin="http://maps.example"/>)"},
    {Code::ORIGIN_TOO_LONG, "origin-too-long", WARNING,
     "An origin has more than scheme, host and port; a final slash is a path.",
     R"(<access origin="http://maps.example/"/>)", R"(<access origin="http://maps.example"/>)"},
    {Code::ORIGIN_WITHOUT_HOST, "origin-without-host", WARNING, "An origin has no host.",
     R"(<access origin="urn:maps"/>)", R"(<access origin="http://maps.example"/>)"},
    {Code::ORIGIN_WITHOUT_PORT, "origin-without-port", WARNING,
     "An origin has no port, and its scheme is not \"http\" or \"https\".",
     R"(<access origin="wss://maps.example"/>)", R"(<access origin="wss://maps.example:443"/>)"},
    {Code::HOST_WITHOUT_ASCII, "host-without-ascii", WARNING,
     "The host of an origin has no ASCII form.", R"(<access origin="http://a..example"/>)",
     R"(<access origin="http://a.example"/>)"},
    {Code::SUBDOMAINS_UNUSED, "subdomains-unused", NOTE,
     "Subdomains are asked for where all origins are.", R"(<access origin="*" subdomains="true"/>)",
     R"(<access origin="*"/>)"},
    {Code::UNEXPECTED_CHILD, "unexpected-child", WARNING,
     "An extension element is read no further than to a child that does not belong there.",
     R"(<tavlo:chrome><tavlo:setting key="configureSearchBar" value="maps"/></tavlo:chrome>)",
     R"(<tavlo:chrome><tavlo:asset key="configureSearchBar" value="maps"/></tavlo:chrome>)"},
    {Code::MISSING_ATTRIBUTE, "missing-attribute", WARNING,
     "An extension element is read no further than to a child that lacks an attribute.",
     R"(<tavlo:cookiejar><tavlo:asset key="persistent"/></tavlo:cookiejar>)",
     R"(<tavlo:cookiejar><tavlo:asset key="persistent" value="true"/></tavlo:cookiejar>)"},
    {Code::NOT_REACHED, "not-reached", WARNING,
     "A child of an extension element stands behind a faulty one, where reading has stopped.",
     R"(<tavlo:messaging><tavlo:app name="org.a"/><tavlo:app name="org.b" value="yes"/></tavlo:messaging>)",
     R"(<tavlo:messaging><tavlo:app name="org.a" value="yes"/><tavlo:app name="org.b" value="yes"/></tavlo:messaging>)"},
    {Code::UNKNOWN_KEY, "unknown-key", WARNING, "Nothing is known by a key.",
     R"(<tavlo:cookiejar><tavlo:asset key="Persistent" value="true"/></tavlo:cookiejar>)",
     R"(<tavlo:cookiejar><tavlo:asset key="persistent" value="true"/></tavlo:cookiejar>)"},
    {Code::SIMILAR_KEY, "similar-key", NOTE,
     "A key of resources, where any may stand, is spelt almost like one with a meaning.",
     R"(<tavlo:resources><tavlo:asset key="localStoragePath" value="data"/></tavlo:resources>)",
     R"(<tavlo:resources><tavlo:asset key="LocalStoragePath" value="data"/></tavlo:resources>)"},
    {Code::REPEATED_KEY, "repeated-key", WARNING,
     "A key stands twice where it has one value, also in two elements of the same name.",
     R"(<tavlo:permissions><tavlo:permission name="location" value="no"/><tavlo:permission name="location"/></tavlo:permissions>)",
     R"(<tavlo:permissions><tavlo:permission name="location" value="no"/></tavlo:permissions>)"},
    {Code::UNKNOWN_WORD, "unknown-word", WARNING,
     "A value is none of the words that count here; each element has its own.",
     R"(<tavlo:settings><tavlo:setting name="internetRequired" value="true"/></tavlo:settings>)",
     R"(<tavlo:settings><tavlo:setting name="internetRequired" value="yes"/></tavlo:settings>)"},
    {Code::VALUE_REFUSED, "value-refused", WARNING, "A value is out of range.",
     R"(<tavlo:settings><tavlo:setting name="zoomFactor" value="0"/></tavlo:settings>)",
     R"(<tavlo:settings><tavlo:setting name="zoomFactor" value="1.5"/></tavlo:settings>)"},
    {Code::BETTER_DENSITY, "better-density", NOTE,
     "A plain default font size comes when one is stored already; one for the density of the "
     "screen always counts.",
     R"(<tavlo:settings><tavlo:setting name="defaultFontSize300" value="22"/><tavlo:setting name="defaultFontSize" value="16"/></tavlo:settings>)",
     R"(<tavlo:settings><tavlo:setting name="defaultFontSize" value="16"/><tavlo:setting name="defaultFontSize300" value="22"/></tavlo:settings>)"},
    {Code::SETTINGS_RESTARTED, "settings-restarted", WARNING,
     "A second element puts aside what the first one set.",
     R"(<tavlo:gestures><tavlo:param name="tap" value="yes"/></tavlo:gestures> <tavlo:gestures><tavlo:param name="hold" value="yes"/></tavlo:gestures>)",
     R"(<tavlo:gestures><tavlo:param name="tap" value="yes"/><tavlo:param name="hold" value="yes"/></tavlo:gestures>)"},
    {Code::EXPORT_WITHOUT_RESOURCE, "export-without-resource", WARNING, "An export has no path.",
     R"(<tavlo:export/>)", R"(<tavlo:export resource="stops.json"/>)"},
    {Code::REPEATED_EXPORT, "repeated-export", WARNING, "An export has the path of an earlier one.",
     R"(<tavlo:export resource="stops.json"/> <tavlo:export resource="stops.json"/>)",
     R"(<tavlo:export resource="stops.json"/>)"},
};

constexpr bool areInOrder() noexcept {
  for (std::size_t i = 0; i < std::size(KINDS); ++i) {
    if (KINDS[i].code != static_cast<Code>(i)) {
      return false;
    }
  }
  return std::size(KINDS) == static_cast<std::size_t>(Code::REPEATED_EXPORT) + 1;
}
static_assert(areInOrder());

}  // namespace

const FindingKind& findingKind(LegacyCode code) noexcept {
  return KINDS[static_cast<std::size_t>(code)];
}

std::vector<FindingKind> findingKinds() {
  return {std::begin(KINDS), std::end(KINDS)};
}

std::string_view findingLevelName(FindingLevel level) noexcept {
  constexpr std::string_view NAMES[] = {"note", "warning", "error"};
  return NAMES[static_cast<std::size_t>(level)];
}

}  // namespace orvane::nimbrel::config
