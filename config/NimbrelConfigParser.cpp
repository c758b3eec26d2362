#include "config/NimbrelConfigParser.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "config/KeyIndex.h"
#include "config/Namespaces.h"
#include "config/Reporter.h"
#include "config/RuleReaders.h"
#include "config/handlers/KnownElement.h"
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
      observer->onFinding({FindingCode::DOCUMENT_REJECTED,
                           nullptr,
                           {},
                           {},
                           error.line,
                           error.column,
                           error.what()});
    }
    throw ConfigParser::ConfigException(error.what(), error.line, error.column);
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
      const bool hasItsName = root != nullptr && root->nameView() == "widget";
      observer_->onFinding({FindingCode::WRONG_ROOT,
                            root.get(),
                            nullptr,
                            hasItsName ? root->namespaceView() : std::string_view(),
                            line,
                            0,
                            {}});
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
}

// By value, so that a caller's list may change while handlers run.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void NimbrelConfigParser::processWidgetElements(std::vector<Node> nodes) {
  std::vector<Element>& elements = record().elements();
  const WalkScope scope(indexes_, record());
  const detail::HandlerContext context{*this, rules, record(), observer_.get()};
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
      context.reporterOf (*node)(FindingCode::UNKNOWN_ELEMENT);
    }
  }
}

BasicConfig& NimbrelConfigParser::record() const {
  if (config == nullptr) {
    throw std::logic_error("There is no record: no document has been processed.");
  }
  return *config;
}

detail::Reporter NimbrelConfigParser::reporterOf(const Node& node) const noexcept {
  return {observer_.get(), node.get()};
}

Option<std::string> NimbrelConfigParser::readIri(const Node& node,
                                                 const AttributeDescription& attribute) {
  Option<std::string> value = detail::readAttribute(node, attribute);
  if (value && !iriParser->tryParse(value.get().c_str(), idIri)) {
    reporterOf(node)(FindingCode::NOT_AN_IRI, attribute, value);
    value.reset();
  }
  return value;
}

bool NimbrelConfigParser::processExtension(const Node& node, const detail::KnownElement& element) {
  return node != nullptr && config != nullptr &&
         element.handle({*this, rules, *config, observer_.get()}, node);
}

}  // namespace orvane::nimbrel::config
