#include "config/Element.h"

#include <stdexcept>
#include <utility>

namespace orvane::nimbrel::config {

using util::LocalizableString;
using util::Option;

Element::Element(std::shared_ptr<util::XmlNode> kept, const ConfigRules& itsRules)
    : node(std::move(kept)), rules(itsRules) {
  if (node == nullptr) {
    throw std::invalid_argument("node cannot be NULL");
  }
}

Element::Element(const Element&) = default;
Element& Element::operator=(const Element&) = default;
Element::~Element() = default;

Option<std::string> Element::getName() const {
  Option<std::string> name;
  if (node->getNodeType() == util::XmlNode::ELEMENT) {
    name = node->getName();
  }
  return name;
}

Option<std::string> Element::getNamespace() const {
  return node->getNamespace();
}

LocalizableString Element::getTextContent(bool normalize) const {
  return rules.getTextContent(node, normalize);
}

LocalizableString Element::getTextContent() const {
  return getTextContent(false);
}

Option<std::string> Element::getSingleAttributeValue(const char* name,
                                                     const char* namespaceUri) const {
  return rules.getSingleAttributeValue(node, namespaceUri, name);
}

Option<std::string> Element::getSingleAttributeValue(const char* name) const {
  return getSingleAttributeValue(name, nullptr);
}

Option<LocalizableString> Element::getSingleDisplayableAttributeValue(
    const char* name, const char* namespaceUri) const {
  return rules.getSingleDisplayableAttributeValue(node, namespaceUri, name);
}

Option<LocalizableString> Element::getSingleDisplayableAttributeValue(const char* name) const {
  return getSingleDisplayableAttributeValue(name, nullptr);
}

}  // namespace orvane::nimbrel::config
