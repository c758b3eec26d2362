#include "check/FindingCode.h"

#include <iterator>

namespace orvane::nimbrel::check {
namespace {

using Code = FindingCode;
constexpr Level NOTE = Level::NOTE;
constexpr Level WARNING = Level::WARNING;
constexpr Level ERROR = Level::ERROR;

// In the order of the codes.
constexpr CodeDescription CODES[] = {
    {Code::DOCUMENT_REJECTED, "document-rejected", ERROR,
     "The document is not well-formed XML, or goes beyond a limit of the parser.",
     R"(<widget xmlns="http://www.w3.org/ns/widgets"><name>Map</widget>)",
     R"(<widget xmlns="http://www.w3.org/ns/widgets"><name>Map</name></widget>)"},
    {Code::WRONG_ROOT, "wrong-root", ERROR,
     "The root element is not `widget` in the namespace of W3C Widgets.",
     R"(<widget id="urn:map"/>)", R"(<widget xmlns="http://www.w3.org/ns/widgets" id="urn:map"/>)"},
    {Code::REQUIRED_FEATURE_NAME, "required-feature-name", ERROR,
     "The name of a required feature is not a full address (IRI). Features are required unless "
     "`required` is false.",
     R"(<feature name="geolocation"/>)",
     R"(<feature name="http://features.example/geolocation"/>)"},
    {Code::NUMBER_REJECTED, "number-rejected", ERROR,
     "A number of `tavlo:network` or `tavlo:resources` is empty or too large.",
     R"(<tavlo:network><tavlo:asset key="maxConnections" value=""/></tavlo:network>)",
     R"(<tavlo:network><tavlo:asset key="maxConnections" value="8"/></tavlo:network>)"},
    {Code::MISSING_ATTRIBUTE, "missing-attribute", WARNING,
     "An attribute that the element needs is missing, or empty where it must not be.",
     R"(<icon width="48"/>)", R"(<icon src="map.png" width="48"/>)"},
    {Code::EMPTY_VALUE, "empty-value", WARNING, "An attribute is empty and therefore ignored.",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" version=" "/>)",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" version="1.0"/>)"},
    {Code::NOT_AN_IRI, "not-an-iri", WARNING,
     "An identifier, link or name is not a full address (IRI), which begins with a scheme.",
     R"(<license href="license.txt">Free</license>)",
     R"(<license href="http://maps.example/license.txt">Free</license>)"},
    {Code::NOT_AN_ORIGIN, "not-an-origin", WARNING,
     "The origin of an access request is neither \"*\" nor scheme, host and port alone.",
     R"(<access origin="http://maps.example/"/>)", R"(<access origin="http://maps.example"/>)"},
    {Code::NOT_A_NUMBER, "not-a-number", WARNING, "A value is not a number and is ignored.",
     R"(<icon src="map.png" width="large"/>)", R"(<icon src="map.png" width="48"/>)"},
    {Code::OUT_OF_RANGE, "out-of-range", WARNING,
     "A number is too small or too large and is ignored.",
     R"(<tavlo:settings><tavlo:setting name="zoomFactor" value="0"/></tavlo:settings>)",
     R"(<tavlo:settings><tavlo:setting name="zoomFactor" value="1.5"/></tavlo:settings>)"},
    {Code::NOT_A_BOOLEAN, "not-a-boolean", WARNING, "A value is neither \"true\" nor \"false\".",
     R"(<preference name="units" value="metric" readonly="yes"/>)",
     R"(<preference name="units" value="metric" readonly="true"/>)"},
    {Code::INVALID_APPLICATION_ID, "invalid-application-id", WARNING,
     "The application id is not 1 to 32 lower-case ASCII letters and digits.",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" xmlns:tavlo=")" NIMBREL_EXTENSION_NAMESPACE
     R"(" tavlo:applicationId="Map-1"/>)",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" xmlns:tavlo=")" NIMBREL_EXTENSION_NAMESPACE
     R"(" tavlo:applicationId="map1"/>)"},
    {Code::UNKNOWN_WORD, "unknown-word", WARNING,
     "A value is none of the words that are allowed here. They differ from element to element.",
     R"(<tavlo:settings><tavlo:setting name="internetRequired" value="true"/></tavlo:settings>)",
     R"(<tavlo:settings><tavlo:setting name="internetRequired" value="yes"/></tavlo:settings>)"},
    {Code::UNKNOWN_KEY, "unknown-key", WARNING, "There is no setting of this name.",
     R"(<tavlo:cookiejar><tavlo:asset key="Persistent" value="true"/></tavlo:cookiejar>)",
     R"(<tavlo:cookiejar><tavlo:asset key="persistent" value="true"/></tavlo:cookiejar>)"},
    {Code::UNKNOWN_ELEMENT, "unknown-element", WARNING,
     "There is no element of this name, or not in this namespace.", R"(<icons src="map.png"/>)",
     R"(<icon src="map.png"/>)"},
    {Code::UNEXPECTED_CHILD, "unexpected-child", WARNING,
     "An extension element has a child that is not allowed; what follows it is not read.",
     R"(<tavlo:chrome><tavlo:setting key="configureSearchBar" value="maps"/></tavlo:chrome>)",
     R"(<tavlo:chrome><tavlo:asset key="configureSearchBar" value="maps"/></tavlo:chrome>)"},
    {Code::REPEATED, "repeated", WARNING,
     "Something is repeated that counts only once: an element, the path of an icon, a name or a "
     "key.",
     R"(<icon src="map.png" width="16"/> <icon src="map.png" width="48"/>)",
     R"(<icon src="map-16.png" width="16"/> <icon src="map.png" width="48"/>)"},
    {Code::UNUSED_SETTING, "unused-setting", NOTE,
     "A font size has no effect, because an earlier setting or one for this screen counts.",
     R"(<tavlo:settings><tavlo:setting name="defaultFontSize" value="16"/><tavlo:setting name="defaultFontSize" value="18"/></tavlo:settings>)",
     R"(<tavlo:settings><tavlo:setting name="defaultFontSize" value="16"/></tavlo:settings>)"},
    {Code::PARTIAL_NUMBER, "partial-number", WARNING,
     "Only the beginning of a value is a number; the rest, such as a unit, is ignored.",
     R"(<icon src="map.png" width="48px"/>)", R"(<icon src="map.png" width="48"/>)"},
    {Code::UNKNOWN_ATTRIBUTE, "unknown-attribute", WARNING,
     "The element has no attribute of this name.", R"(<icon src="map.png" heigth="48"/>)",
     R"(<icon src="map.png" height="48"/>)"},
    {Code::FOREIGN_ELEMENT, "foreign-element", NOTE,
     "An element belongs to another vocabulary; it is kept for programs that know it.",
     R"(<shop xmlns="http://shop.example/ns" price="1"/>)", ""},
    {Code::MISPLACED, "misplaced", WARNING, "An element or text stands where it is not read.",
     R"(<param name="interval" value="15"/>)",
     R"(<feature name="urn:f"><param name="interval" value="15"/></feature>)"},
    {Code::NOT_READ, "not-read", WARNING,
     "A child of an extension element is not read, because an earlier one is wrong.",
     R"(<tavlo:messaging><tavlo:app name="org.a"/><tavlo:app name="org.b" value="yes"/></tavlo:messaging>)",
     R"(<tavlo:messaging><tavlo:app name="org.a" value="yes"/><tavlo:app name="org.b" value="yes"/></tavlo:messaging>)"},
    {Code::SIMILAR_KEY, "similar-key", NOTE,
     "A key of `tavlo:resources`, where any is allowed, is spelt almost like a known one, or is "
     "one "
     "of another element.",
     R"(<tavlo:resources><tavlo:asset key="localStoragePath" value="data"/></tavlo:resources>)",
     R"(<tavlo:resources><tavlo:asset key="LocalStoragePath" value="data"/></tavlo:resources>)"},
    {Code::UNUSED_LANGUAGE, "unused-language", WARNING,
     "An element is in a language that the user does not ask for, and there is no other element of "
     "its name for this user.",
     R"(<name xml:lang="*">Map</name>)", R"(<name>Map</name>)"},
    {Code::OTHER_LANGUAGE, "other-language", NOTE,
     "An element is not used, because there is one in a better language.",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" defaultlocale="en"><name xml:lang="en">Map</name><name>Map</name></widget>)",
     R"(<widget xmlns="http://www.w3.org/ns/widgets" defaultlocale="en"><name xml:lang="en">Map</name></widget>)"},
    {Code::UNUSED_ATTRIBUTE, "unused-attribute", NOTE,
     "An attribute has no effect because of the value of another one.",
     R"(<access origin="*" subdomains="true"/>)", R"(<access origin="*"/>)"},
    {Code::INVALID_VALUE, "invalid-value", WARNING,
     "A value is kept, but is of no use: a view mode or a language that there is not, or a path "
     "with \"\\\".",
     R"(<name xml:lang="en_US">Map</name>)", R"(<name xml:lang="en-US">Map</name>)"},
    {Code::SUSPICIOUS_VALUE, "suspicious-value", NOTE,
     "A value is probably not what was meant: a country as a language, an unknown encoding, a "
     "repeated keyword, or an address where a path is needed.",
     R"(<name xml:lang="jp">Map</name>)", R"(<name xml:lang="ja">Map</name>)"},
    {Code::MISSING_FILE, "missing-file", WARNING,
     "The start file, an icon or the license is not in the package, or there is nothing to start.",
     R"(<!-- package: index.html map.png --> <icon src="Map.png"/>)",
     R"(<!-- package: index.html map.png --> <icon src="map.png"/>)"},
    {Code::OUTSIDE_PACKAGE, "outside-package", WARNING,
     "A path, the name of a file or a symbolic link leads out of the package, or may do so.",
     R"(<!-- package: index.html map.png --> <icon src="../map.png"/>)",
     R"(<!-- package: index.html map.png --> <icon src="map.png"/>)"},
    {Code::UNKNOWN_TYPE, "unknown-type", WARNING,
     "The type of the start file is none of those that W3C Widgets know.",
     R"(<!-- package: app.html --> <content src="app.html" type="html"/>)",
     R"(<!-- package: app.html --> <content src="app.html" type="text/html"/>)"},
    {Code::AMBIGUOUS_NAME, "ambiguous-name", WARNING,
     "Files or folders of the package have the same name, or names that differ by case only.",
     R"(<!-- package: index.html map.png Map.png --> <icon src="map.png"/>)",
     R"(<!-- package: index.html map.png --> <icon src="map.png"/>)"},
    {Code::UNLISTED_BYTES, "unlisted-bytes", WARNING,
     "There are bytes in the package that belong to no file of it.",
     R"(<!-- package: index.html +7 --> <name>Map</name>)",
     R"(<!-- package: index.html --> <name>Map</name>)"},
    {Code::UNUSABLE_PACKAGE, "unusable-package", ERROR,
     "The package is no usable ZIP archive, or has no document, or more than one, at its root.",
     R"(<!-- package: index.html config.xml config.xml --> <name>Map</name>)",
     R"(<!-- package: index.html config.xml --> <name>Map</name>)"},
};

constexpr bool areInOrder() noexcept {
  std::size_t next = 0;
  for (const CodeDescription& row : CODES) {
    next += row.code == static_cast<Code>(next) ? 1U : 0U;
  }
  return next == std::size(CODES);
}
static_assert(areInOrder());
static_assert(CODES[std::size(CODES) - 1].code == Code::UNUSABLE_PACKAGE);

}  // namespace

std::string_view levelName(Level level) noexcept {
  constexpr std::string_view NAMES[] = {"note", "warning", "error"};
  return NAMES[static_cast<std::size_t>(level)];
}

const CodeDescription& descriptionOf(FindingCode code) noexcept {
  return CODES[static_cast<std::size_t>(code)];
}

config::DescriptionList<CodeDescription> codeDescriptions() noexcept {
  return CODES;
}

}  // namespace orvane::nimbrel::check
