#include "config/NimbrelConfigParser.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "config/ElementReader.h"
#include "config/Namespaces.h"
#include "config/ValueRules.h"
#include "config/handlers/Elements.h"
#include "util/ParseException.h"

namespace orvane::nimbrel::config {
namespace {

using util::Option;
using util::XmlDocument;
using util::XmlNode;

using Node = std::shared_ptr<XmlNode>;

/// Stands for the elements that carry no language.
constexpr std::string_view ANY_LOCALE = "*";

template <typename Service>
void requireService(const std::shared_ptr<Service>& service, const char* message) {
  if (service == nullptr) {
    throw std::invalid_argument(message);
  }
}

/// Calls an XML parser and gives its exceptions the type that our callers know.
template <typename Parse>
std::shared_ptr<XmlDocument> parseXml(ParseObserver* observer, Parse parse) {
  try {
    return parse();
  } catch (const ParseException& error) {
    if (observer != nullptr) {
      const std::string_view none;
      observer->onFinding({FindingCode::DOCUMENT_REJECTED, nullptr, nullptr, none, error.line,
                           error.column, error.what()});
    }
    throw ConfigParser::ConfigException(error.what(), error.line, error.column);
  }
}

}  // namespace

NimbrelConfigParser::NimbrelConfigParser(const std::vector<std::string>& locales,
                                         std::shared_ptr<util::XmlParser> xml,
                                         std::shared_ptr<util::IRIParser> iri,
                                         std::shared_ptr<util::IDNConverter> idn,
                                         std::shared_ptr<util::UnicodeUtil> unicode)
    : userAgentLocales(locales),
      xmlParser(std::move(xml)),
      iriParser(std::move(iri)),
      idnConverter(std::move(idn)),
      unicodeUtil(std::move(unicode)),
      rules(unicodeUtil) {
  requireService(xmlParser, "xmlParser cannot be NULL");
  requireService(iriParser, "iriParser cannot be NULL");
  requireService(idnConverter, "idnConverter cannot be NULL");
}

ParseObserver::~ParseObserver() = default;
NimbrelConfigParser::~NimbrelConfigParser() = default;

std::shared_ptr<Config> NimbrelConfigParser::parse(const char* buffer, unsigned int size,
                                                   const char* url, const char* encoding) {
  if (buffer == nullptr) {
    throw std::invalid_argument("buffer cannot be NULL");
  }
  return process(
      parseXml(observer_.get(), [&] { return xmlParser->parse(buffer, size, url, encoding); }),
      userAgentLocales);
}

std::shared_ptr<Config> NimbrelConfigParser::parse(const char* path, const char* encoding) {
  if (path == nullptr) {
    throw std::invalid_argument("path cannot be NULL");
  }
  return process(parseXml(observer_.get(), [&] { return xmlParser->parse(path, encoding); }),
                 userAgentLocales);
}

std::shared_ptr<BasicConfig> NimbrelConfigParser::process(std::shared_ptr<XmlDocument> document,
                                                          const std::vector<std::string>& locales) {
  const Node root = beginRecord(std::move(document), locales);
  processWidgetAttributes(root);
  if (root->firstElementChild() != nullptr) {
    std::vector<Node> nodes;
    processUserAgentLocales(nodes);
    processWidgetElements(std::move(nodes));
  }
  return config;
}

Node NimbrelConfigParser::beginRecord(std::shared_ptr<XmlDocument> document,
                                      const std::vector<std::string>& locales) {
  if (document == nullptr) {
    throw std::invalid_argument("document cannot be NULL");
  }
  // Copied first: `locales` may be a member of the previous record, which the next line releases.
  std::vector<std::string> keptLocales = locales;
  config = std::make_shared<BasicConfig>();
  config->document() = std::move(document);
  Node root = config->document()->getDocumentElement();
  if (root == nullptr || !rules.xmlNodeHasName(root, W3C_WIDGETS_NAMESPACE, "widget")) {
    const std::uint32_t line = root == nullptr ? 0U : root->getLineNumber();
    if (observer_ != nullptr) {
      const bool isNamed = root != nullptr && root->nameView() == "widget";
      const std::string_view space = isNamed ? root->namespaceView() : std::string_view();
      observer_->onFinding({FindingCode::WRONG_ROOT, root.get(), nullptr, space, line, 0, ""});
    }
    throw ConfigException(
        std::string("Document root is not a 'widget' from '") + W3C_WIDGETS_NAMESPACE + "'.", line,
        0U);
  }
  config->userAgentLocales() = std::move(keptLocales);
  config->orvnAuthMode() = 0;
  return root;
}

void NimbrelConfigParser::setObserver(std::shared_ptr<ParseObserver> observer) {
  observer_ = std::move(observer);
}

void NimbrelConfigParser::setError(const std::string& message) {
  errorText = message;
}

void NimbrelConfigParser::setError(const char* message) {
  errorText = message == nullptr ? "" : message;
}

const std::string& NimbrelConfigParser::getErrorText() const noexcept {
  return errorText;
}

void NimbrelConfigParser::processUserAgentLocales(std::vector<Node>& nodes) {
  const std::vector<std::string>& locales = record().getUserAgentLocales();
  // One pass over the children, whatever the number of locales: the places of a locale in the list
  // are found by binary search, and the children are sorted by counting those of each place.
  std::vector<std::pair<std::string_view, std::size_t>> places;
  places.reserve(locales.size());
  for (const std::string& locale : locales) {
    places.emplace_back(locale, places.size());
  }
  std::sort(places.begin(), places.end());
  const auto placeOf = [&](std::string_view locale) {
    return std::lower_bound(places.cbegin(), places.cend(), std::pair(locale, std::size_t{0}));
  };
  std::vector<std::pair<std::size_t, const XmlNode*>> visits;
  visits.reserve(32);                                   // enough for most documents
  std::vector<std::size_t> begins(locales.size() + 1);  // of the nodes of each place
  const auto add = [&](auto place, std::string_view locale, const XmlNode* child) {
    for (; place != places.end() && place->first == locale; ++place) {
      visits.emplace_back(place->second, child);
      ++begins[place->second + 1];
    }
  };
  const auto anyLocale = placeOf(ANY_LOCALE);
  const std::shared_ptr<XmlDocument>& document = config->document();
  const Node root = document == nullptr ? nullptr : document->getDocumentElement();
  for (const XmlNode* child = root == nullptr ? nullptr : root->firstElementChild();
       child != nullptr; child = child->nextElementSibling()) {
    const std::string_view lang = child->attributeView("lang", XML_NAMESPACE);
    if (lang.empty()) {
      add(anyLocale, ANY_LOCALE, child);
    }
    // An empty language is no language, yet it equals an empty locale; "*" is never a language.
    if (lang.data() != nullptr && lang != ANY_LOCALE) {
      add(placeOf(lang), lang, child);
    }
  }
  begins[0] = nodes.size();
  std::partial_sum(begins.begin(), begins.end(), begins.begin());
  nodes.resize(nodes.size() + visits.size());
  for (const auto& [place, child] : visits) {
    // What `share` does, but the document is at hand.
    nodes[begins[place]++] =
        std::const_pointer_cast<XmlNode>(std::shared_ptr<const XmlNode>(document, child));
  }
}

// By value, so that a caller's list may change while handlers run.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void NimbrelConfigParser::processWidgetElements(std::vector<Node> nodes) {
  std::vector<Element>& elements = record().elements();
  detail::HandlerContext context = contextOf();
  elements.reserve(elements.size() + nodes.size());
  for (Node& listed : nodes) {
    // No handler adds to the elements, so the reference holds.
    const Node& node = elements.emplace_back(std::move(listed), rules).getNode();
    const detail::KnownElement* const known = detail::findKnownElement(*node);
    if (known != nullptr) {
      known->handle(context, node);
    } else if (!rules.xmlNodeHasName(node, W3C_WIDGETS_NAMESPACE, "param")) {
      // A param outside of a feature means nothing, and is no error either.
      setError("!Error: ConfigParser::processWidgetElements, Found unknown xml element");
      context.readerOf(*node).report(FindingCode::UNKNOWN_ELEMENT);
    }
  }
}

// The handlers one by one, for hosts. A line each.
// clang-format off
void NimbrelConfigParser::processWidgetAttributes(const Node& node) { handle(detail::WIDGET, node); }
void NimbrelConfigParser::processName(const Node& node) { handle(detail::NAME, node); }
void NimbrelConfigParser::processDescription(const Node& node) { handle(detail::DESCRIPTION, node); }
void NimbrelConfigParser::processLicense(const Node& node) { handle(detail::LICENSE, node); }
void NimbrelConfigParser::processAuthor(const Node& node) { handle(detail::AUTHOR, node); }
void NimbrelConfigParser::processContent(const Node& node) { handle(detail::CONTENT, node); }
void NimbrelConfigParser::processIcon(const Node& node) { handle(detail::ICON, node); }
void NimbrelConfigParser::processPreference(const Node& node) { handle(detail::PREFERENCE, node); }
void NimbrelConfigParser::processFeature(const Node& node) { handle(detail::FEATURE, node); }
void NimbrelConfigParser::processAccess(const Node& node) { handle(detail::ACCESS, node); }
bool NimbrelConfigParser::processCookieJar(const Node& node) { return tryHandle(detail::COOKIE_JAR, node); }
bool NimbrelConfigParser::processAuth(const Node& node) { return tryHandle(detail::AUTH, node); }
bool NimbrelConfigParser::processNetwork(const Node& node) { return tryHandle(detail::NETWORK, node); }
bool NimbrelConfigParser::processGestures(const Node& node) { return tryHandle(detail::GESTURES, node); }
bool NimbrelConfigParser::processPermissions(const Node& node) { return tryHandle(detail::PERMISSIONS, node); }
bool NimbrelConfigParser::processChrome(const Node& node) { return tryHandle(detail::CHROME, node); }
bool NimbrelConfigParser::processSettings(const Node& node) { return tryHandle(detail::SETTINGS, node); }
bool NimbrelConfigParser::processMessaging(const Node& node) { return tryHandle(detail::MESSAGING, node); }
bool NimbrelConfigParser::processLocalResources(const Node& node) { return tryHandle(detail::RESOURCES, node); }
bool NimbrelConfigParser::processExport(const Node& node) { return tryHandle(detail::EXPORT, node); }
// clang-format on

void NimbrelConfigParser::processDefaultLocale(const Option<std::string>& defaultLocale) {
  detail::completeLocales(record(), defaultLocale);
}

void NimbrelConfigParser::processViewMode(const Option<std::string>& viewModes) {
  detail::readViewModes(contextOf(), viewModes);
}

Option<unsigned int> parseWidthOrHeight(const ConfigRules& /*rules*/,
                                        const Option<std::string>& value) {
  return value ? detail::readSize(value.get()) : Option<unsigned int>();
}

BasicConfig& NimbrelConfigParser::record() const {
  if (config == nullptr) {
    throw std::logic_error("There is no record: no document has been processed.");
  }
  return *config;
}

detail::HandlerContext NimbrelConfigParser::contextOf() {
  return {*iriParser,      *idnConverter, rules,       record(),
          observer_.get(), idIri,         contentSeen, errorText};
}

bool NimbrelConfigParser::handle(const detail::KnownElement& element, const Node& node) {
  detail::HandlerContext context = contextOf();
  detail::requireNode(node);
  return element.handle(context, node);
}

bool NimbrelConfigParser::tryHandle(const detail::KnownElement& element, const Node& node) {
  return node != nullptr && config != nullptr && handle(element, node);
}

}  // namespace orvane::nimbrel::config
