#include "config/NimbrelConfigParser.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "config/KeyIndex.h"
#include "config/LanguageReports.h"
#include "config/Namespaces.h"
#include "config/Report.h"
#include "config/Vocabulary.h"
#include "util/ParseException.h"

namespace orvane::nimbrel::config {
namespace {

using util::Option;
using util::XmlDocument;
using util::XmlNode;

using Node = std::shared_ptr<XmlNode>;
using Handler = void (*)(NimbrelConfigParser& parser, const Node& node);

template <auto Method>
void call(NimbrelConfigParser& parser, const Node& node) {
  (parser.*Method)(node);
}

using Parser = NimbrelConfigParser;

// In the order in which they are tried; the first match acts.
constexpr struct Dispatch {
  std::string_view name;
  const char* namespaceUri;
  Handler handler;  // null: the element means nothing here
} DISPATCH[] = {
    {"name", W3C_WIDGETS_NAMESPACE, call<&Parser::processName>},
    {"description", W3C_WIDGETS_NAMESPACE, call<&Parser::processDescription>},
    {"license", W3C_WIDGETS_NAMESPACE, call<&Parser::processLicense>},
    {"icon", W3C_WIDGETS_NAMESPACE, call<&Parser::processIcon>},
    {"author", W3C_WIDGETS_NAMESPACE, call<&Parser::processAuthor>},
    {"preference", W3C_WIDGETS_NAMESPACE, call<&Parser::processPreference>},
    {"content", W3C_WIDGETS_NAMESPACE, call<&Parser::processContent>},
    {"param", W3C_WIDGETS_NAMESPACE, nullptr},
    {"feature", W3C_WIDGETS_NAMESPACE, call<&Parser::processFeature>},
    {"access", W3C_WIDGETS_NAMESPACE, call<&Parser::processAccess>},
    {"cookiejar", EXTENSION_NAMESPACE, call<&Parser::processCookieJar>},
    {"auth", EXTENSION_NAMESPACE, call<&Parser::processAuth>},
    {"network", EXTENSION_NAMESPACE, call<&Parser::processNetwork>},
    {"gestures", EXTENSION_NAMESPACE, call<&Parser::processGestures>},
    {"permissions", EXTENSION_NAMESPACE, call<&Parser::processPermissions>},
    {"chrome", EXTENSION_NAMESPACE, call<&Parser::processChrome>},
    {"settings", EXTENSION_NAMESPACE, call<&Parser::processSettings>},
    {"messaging", EXTENSION_NAMESPACE, call<&Parser::processMessaging>},
    {"resources", EXTENSION_NAMESPACE, call<&Parser::processLocalResources>},
    {"export", EXTENSION_NAMESPACE, call<&Parser::processExport>},
};

/// The namespace of a node as the table spells it; null when the table does not know it.
const char* dispatchNamespace(const XmlNode& node) {
  const std::string_view uri = node.namespaceView();
  for (const char* known : {static_cast<const char*>(W3C_WIDGETS_NAMESPACE), EXTENSION_NAMESPACE}) {
    if (uri == known) {
      return known;
    }
  }
  return nullptr;
}

const Dispatch* findDispatch(const XmlNode& node) {
  const std::string_view name = node.nameView();
  const char* const namespaceUri = dispatchNamespace(node);
  for (const Dispatch& row : DISPATCH) {
    if (row.namespaceUri == namespaceUri && row.name == name) {
      return &row;
    }
  }
  return nullptr;
}

/// Stands for the elements that carry no language.
constexpr std::string_view ANY_LOCALE = "*";

template <typename Service>
void requireService(const std::shared_ptr<Service>& service, const char* message) {
  if (service == nullptr) {
    throw std::invalid_argument(message);
  }
}

/// Calls an XML parser and gives its refusals the type that our callers know.
template <typename Parse>
std::shared_ptr<XmlDocument> parseXml(detail::Observation* observation, Parse parse) {
  try {
    return parse();
  } catch (const ParseException& refusal) {
    if (observation != nullptr) {
      observation->beginDocument();
      observation->tell({LegacyCode::DOCUMENT_REFUSED,
                         {},
                         {},
                         refusal.line,
                         refusal.column,
                         {},
                         refusal.what(),
                         {}});
    }
    throw ConfigParser::ConfigException(refusal.what(), refusal.line, refusal.column);
  }
}

/// Holds the indexes of a walk for its duration.
class WalkScope {
 public:
  WalkScope(std::unique_ptr<detail::WalkIndexes>& indexes, BasicConfig& record)
      : indexes_(indexes) {
    indexes_ = std::make_unique<detail::WalkIndexes>(record);
  }
  WalkScope(const WalkScope&) = delete;
  WalkScope& operator=(const WalkScope&) = delete;
  ~WalkScope() { indexes_.reset(); }

 private:
  std::unique_ptr<detail::WalkIndexes>& indexes_;
};

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
  requireService(unicodeUtil, "unicodeUtil cannot be NULL");
}

NimbrelConfigParser::~NimbrelConfigParser() = default;

std::shared_ptr<Config> NimbrelConfigParser::parse(const char* buffer, unsigned int size,
                                                   const char* url, const char* encoding) {
  if (buffer == nullptr) {
    throw std::invalid_argument("buffer cannot be NULL");
  }
  return process(
      parseXml(observation.get(), [&] { return xmlParser->parse(buffer, size, url, encoding); }),
      userAgentLocales);
}

std::shared_ptr<Config> NimbrelConfigParser::parse(const char* path, const char* encoding) {
  if (path == nullptr) {
    throw std::invalid_argument("path cannot be NULL");
  }
  return process(parseXml(observation.get(), [&] { return xmlParser->parse(path, encoding); }),
                 userAgentLocales);
}

std::shared_ptr<BasicConfig> NimbrelConfigParser::process(std::shared_ptr<XmlDocument> document,
                                                          const std::vector<std::string>& locales) {
  if (document == nullptr) {
    throw std::invalid_argument("document cannot be NULL");
  }
  // They may belong to the previous record, which ends here.
  std::vector<std::string> keptLocales = locales;
  if (observation != nullptr) {
    observation->beginDocument();
  }
  config = std::make_shared<BasicConfig>();
  config->document() = std::move(document);
  const Node root = config->document()->getDocumentElement();
  if (root == nullptr || !rules.xmlNodeHasName(root, W3C_WIDGETS_NAMESPACE, "widget")) {
    if (observation != nullptr) {
      detail::reportForeignRoot(root.get(), *observation);
    }
    throw ConfigException(
        std::string("Document root is not a 'widget' from '") + W3C_WIDGETS_NAMESPACE + "'.",
        root == nullptr ? 0U : root->getLineNumber(), 0U);
  }
  config->userAgentLocales() = std::move(keptLocales);
  config->orvnAuthMode() = 0;
  if (observation != nullptr) {
    detail::examineAttributes(*root, *observation);
  }
  processWidgetAttributes(root);
  if (root->firstElementChild() != nullptr) {
    std::vector<Node> nodes;
    processUserAgentLocales(nodes);
    processWidgetElements(std::move(nodes));
  }
  return config;
}

void NimbrelConfigParser::setObserver(std::shared_ptr<ParseObserver> observer) {
  observation =
      observer == nullptr ? nullptr : std::make_unique<detail::Observation>(std::move(observer));
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
  const BasicConfig& target = record();
  const std::vector<std::string>& locales = target.getUserAgentLocales();

  // One pass over the children, whatever the number of locales: each child joins the queue of its
  // locale. A queue is chained through the visits; 0 ends it.
  struct Visit {
    const XmlNode* child;
    std::size_t next;
  };
  struct Queue {
    std::string_view locale;
    std::size_t first = 0;
    std::size_t last = 0;
  };
  std::vector<Visit> visits;
  visits.reserve(32);  // enough for most documents
  visits.push_back({nullptr, 0});
  std::vector<Queue> queues;
  queues.reserve(locales.size());
  for (const std::string& locale : locales) {
    queues.push_back({locale});
  }
  const auto byLocale = [](const Queue& queue, std::string_view locale) {
    return queue.locale < locale;
  };
  std::sort(queues.begin(), queues.end(),
            [](const Queue& left, const Queue& right) { return left.locale < right.locale; });
  const auto queueOf = [&](std::string_view locale) -> Queue* {
    const auto found = std::lower_bound(queues.begin(), queues.end(), locale, byLocale);
    return found != queues.end() && found->locale == locale ? &*found : nullptr;
  };
  const auto enqueue = [&](Queue* queue, const XmlNode* child) {
    if (queue != nullptr) {
      (queue->first == 0 ? queue->first : visits[queue->last].next) = visits.size();
      queue->last = visits.size();
      visits.push_back({child, 0});
    }
  };

  Queue* const anyLocale = queueOf(ANY_LOCALE);
  const std::shared_ptr<XmlDocument>& document = config->document();
  const Node root = document == nullptr ? nullptr : document->getDocumentElement();
  for (const XmlNode* child = root == nullptr ? nullptr : root->firstElementChild();
       child != nullptr; child = child->nextElementSibling()) {
    const std::string_view lang = child->attributeView("lang", XML_NAMESPACE);
    if (lang.empty()) {
      enqueue(anyLocale, child);
    }
    // An empty language is no language, yet it equals an empty locale; "*" is never a language.
    if (lang.data() != nullptr && lang != ANY_LOCALE) {
      enqueue(queueOf(lang), child);
    }
  }
  nodes.reserve(nodes.size() + visits.size());
  for (const std::string& locale : locales) {
    for (std::size_t at = queueOf(locale)->first; at != 0; at = visits[at].next) {
      // What `share` does, but the document is at hand.
      nodes.push_back(std::const_pointer_cast<XmlNode>(
          std::shared_ptr<const XmlNode>(document, visits[at].child)));
    }
  }
  if (observation != nullptr && root != nullptr) {
    detail::reportUnheard(*root, nodes, *observation);
  }
}

// By value, so that a caller's list may change while handlers run.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void NimbrelConfigParser::processWidgetElements(std::vector<Node> nodes) {
  std::vector<Element>& elements = record().elements();
  const WalkScope scope(indexes, record());
  elements.reserve(elements.size() + nodes.size());
  for (Node& listed : nodes) {
    // No handler adds to the elements, so the reference holds.
    const Node& node = elements.emplace_back(std::move(listed), rules).getNode();
    if (observation != nullptr) {
      observation->visit(*node);
      detail::examineAttributes(*node, *observation);
    }
    const Dispatch* const row = findDispatch(*node);
    if (row == nullptr) {
      setError("!Error: ConfigParser::processWidgetElements, Found unknown xml element");
      if (observation != nullptr) {
        detail::reportUnknownElement(*node, *observation);
      }
    } else if (row->handler != nullptr) {
      row->handler(*this, node);
    } else {
      detail::Report(observation.get(), node.get())(LegacyCode::PARAM_OUTSIDE_FEATURE,
                                                    "A param counts within a feature only.");
    }
  }
}

BasicConfig& NimbrelConfigParser::record() const {
  if (config == nullptr) {
    throw std::logic_error("There is no record: no document has been processed.");
  }
  return *config;
}

Option<std::string> NimbrelConfigParser::readIri(const XmlNode& node, const char* name,
                                                 LegacyCode otherwise) {
  Option<std::string> value = rules.getSingleAttributeValue(node, nullptr, name);
  if (value && !iriParser->tryParse(value.get().c_str(), idIri)) {
    detail::Report(observation.get(), &node)(otherwise, name, value,
                                             "It is no IRI, which begins with a scheme.");
    value.reset();
  }
  return value;
}

}  // namespace orvane::nimbrel::config
