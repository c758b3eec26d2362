#include "config/ConfigRules.h"

#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "config/ElementReader.h"
#include "config/Namespaces.h"
#include "config/ValueRules.h"
#include "util/Ascii.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::config {
namespace {

using util::LocalizableString;
using util::Option;
using util::XmlNode;

using Node = std::shared_ptr<XmlNode>;
using detail::requireNode;
using zel::util::StringUtil;

using Direction = LocalizableString::Direction;

/// The direction that a node itself asks for; nothing when it asks for none or for an unknown one.
std::optional<Direction> ownDirection(const XmlNode& node) noexcept {
  return detail::readDirection(node.attributeView("dir"));
}

/// The nearest direction that a node or an ancestor asks for.
Direction directionOf(const XmlNode& node) noexcept {
  for (const XmlNode* current = &node; current != nullptr; current = current->parent()) {
    const std::optional<Direction> own = ownDirection(*current);
    if (own) {
      return *own;
    }
  }
  return Direction::LTR;
}

/// The number of text nodes below `node`. Documents are at most 256 deep.
std::size_t countTextsOf(const XmlNode& node) noexcept {
  std::size_t count = node.getNodeType() == XmlNode::TEXT ? 1 : 0;
  for (const XmlNode* child = node.firstChild(); child != nullptr; child = child->nextSibling()) {
    count += countTextsOf(*child);
  }
  return count;
}

/// Appends one run for each text node below `node`, whose language and direction are given: both
/// are handed down rather than looked up anew at each node.
void appendTextOf(const XmlNode& node, const std::string& language, Direction direction,
                  std::vector<LocalizableString::TextNode>& runs) {
  for (const XmlNode* child = node.firstChild(); child != nullptr; child = child->nextSibling()) {
    if (child->getNodeType() == XmlNode::TEXT) {
      runs.push_back({std::string(child->contentView()), direction, language});
    } else if (child->getNodeType() == XmlNode::ELEMENT) {
      const Direction itsDirection = ownDirection(*child).value_or(direction);
      const std::string_view own = child->attributeView("lang", XML_NAMESPACE);
      if (own.data() != nullptr) {
        appendTextOf(*child, std::string(own), itsDirection, runs);
      } else {
        appendTextOf(*child, language, itsDirection, runs);
      }
    }
  }
}

std::string_view viewOf(const char* text) noexcept {
  return text == nullptr ? std::string_view() : std::string_view(text);
}

void requireInput(const char* input) {
  if (input == nullptr) {
    throw std::invalid_argument("input is null");
  }
}

}  // namespace

ConfigRules::ConfigRules(std::shared_ptr<util::UnicodeUtil> unicodeUtil)
    : unicodeUtil_(std::move(unicodeUtil)) {
  if (unicodeUtil_ == nullptr) {
    throw std::invalid_argument("unicodeUtil cannot be NULL");
  }
}

Option<std::string> ConfigRules::getSingleAttributeValue(const Node& node, const char* namespaceUri,
                                                         const char* name) const {
  const XmlNode& element = requireNode(node);
  return name == nullptr ? Option<std::string>()
                         : detail::readAttribute(element, name, viewOf(namespaceUri));
}

Option<LocalizableString> ConfigRules::getSingleDisplayableAttributeValue(const Node& node,
                                                                          const char* namespaceUri,
                                                                          const char* name) const {
  Option<LocalizableString> result;
  Option<std::string> value = getSingleAttributeValue(node, namespaceUri, name);
  if (value) {
    LocalizableString& text = result.emplace(unicodeUtil_, directionOf(*node), node->getXmlLang());
    text.append(std::move(value.get()), text.getDirection(), text.getLanguageTag());
  }
  return result;
}

LocalizableString ConfigRules::getTextContent(const Node& node, bool normalize) const {
  const XmlNode& element = requireNode(node);
  // An empty element has neither language nor direction.
  const bool isEmpty = element.firstChild() == nullptr;
  LocalizableString text(unicodeUtil_, isEmpty ? Direction::LTR : directionOf(element),
                         isEmpty ? std::string() : element.getXmlLang());
  std::vector<LocalizableString::TextNode> runs;
  runs.reserve(countTextsOf(element));
  appendTextOf(element, text.getLanguageTag(), text.getDirection(), runs);
  text.append(std::move(runs));
  if (normalize) {
    text.normalizeWhitespace();
    text.trim();
  }
  return text;
}

Direction ConfigRules::determineDirectionality(const Node& node) const {
  return directionOf(requireNode(node));
}

bool ConfigRules::xmlNodeHasName(const Node& node, const char* namespaceUri,
                                 const char* name) const {
  const XmlNode& element = requireNode(node);
  if (name == nullptr || element.getNodeType() != XmlNode::ELEMENT || element.nameView() != name) {
    return false;
  }
  const std::string_view wanted = viewOf(namespaceUri);
  const std::string_view found = element.namespaceView();
  return (wanted.data() == nullptr) == (found.data() == nullptr) && wanted == found;
}

bool ConfigRules::xmlNodeHasExplicitLang(const Node& node) const {
  return !requireNode(node).attributeView("lang", XML_NAMESPACE).empty();
}

bool ConfigRules::xmlNodeHasExplicitLang(const Node& node, const char* lang) const {
  const std::string_view own = requireNode(node).attributeView("lang", XML_NAMESPACE);
  return own.data() != nullptr && lang != nullptr && own == lang;
}

bool ConfigRules::parseBoolean(const char* input) const {
  requireInput(input);
  const std::optional<bool> value = detail::readBoolean(input);
  if (!value) {
    throw std::invalid_argument("input is not a valid boolean");
  }
  return *value;
}

unsigned int ConfigRules::parseNonNegativeInteger(const char* input) const {
  requireInput(input);
  const detail::IntegerReading reading = detail::readNonNegativeInteger(input);
  if (reading.fault == detail::IntegerFault::NO_NUMBER) {
    throw std::invalid_argument("input");
  }
  if (reading.fault == detail::IntegerFault::TOO_LARGE) {
    throw std::overflow_error("input");
  }
  return reading.value;
}

std::vector<std::string> ConfigRules::parseListOfKeywords(const char* input) const {
  requireInput(input);
  return StringUtil::split(StringUtil::squeezeAndTrim(input), ' ');
}

bool ConfigRules::isValidTavloApplicationId(const char* id) const {
  constexpr std::size_t MAX_LENGTH = 32;
  if (id == nullptr) {
    return false;
  }
  std::size_t length = 0;
  for (; id[length] != '\0'; ++length) {
    const char c = id[length];
    const bool allowed = util::ascii::isLowerCase(c) || util::ascii::isDigit(c);
    if (length == MAX_LENGTH || !allowed) {
      return false;
    }
  }
  return length != 0;
}

}  // namespace orvane::nimbrel::config
