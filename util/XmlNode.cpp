#include "util/XmlNode.h"

#include "util/XmlDocument.h"
#include "util/xml/XmlTree.h"

namespace orvane::nimbrel::util {
namespace {

std::string_view viewOf(const char* text) noexcept {
  return text == nullptr ? std::string_view() : std::string_view(text);
}

std::string_view viewOf(const internal::XmlSymbol* symbol) noexcept {
  return symbol == nullptr ? std::string_view() : symbol->view();
}

/// Most names differ in their first letter, which is quicker to see than to call for a comparison.
bool isSameName(std::string_view found, std::string_view wanted) noexcept {
  return found.size() == wanted.size() && !wanted.empty() && found[0] == wanted[0] &&
         found == wanted;
}

/// Whether a namespace, possibly none, is the one that a view names; none is null data there.
bool isSame(const internal::XmlSymbol* found, std::string_view wanted) noexcept {
  return found == nullptr ? wanted.data() == nullptr
                          : wanted.data() != nullptr && found->view() == wanted;
}

/// None for a view with null data.
Option<std::string> optionOf(std::string_view view) {
  Option<std::string> option;
  if (view.data() != nullptr) {
    option = std::string(view);
  }
  return option;
}

const XmlNode* elementFrom(const XmlNode* node) noexcept {
  while (node != nullptr && node->getNodeType() != XmlNode::ELEMENT) {
    node = node->nextSibling();
  }
  return node;
}

std::shared_ptr<XmlNode> shareIfAny(const XmlNode* node) {
  return node == nullptr ? nullptr : node->share();
}

}  // namespace

std::string XmlNode::getName() const {
  return std::string(nameView());
}

Option<std::string> XmlNode::getNamespace() const {
  return optionOf(namespaceView());
}

Option<std::string> XmlNode::getAttribute(const char* name) const {
  return getAttribute(name, nullptr);
}

Option<std::string> XmlNode::getAttribute(const char* name, const char* namespaceUri) const {
  return name == nullptr ? Option<std::string>()
                         : optionOf(attributeView(name, viewOf(namespaceUri)));
}

std::string XmlNode::getXmlLang() const {
  return std::string(xmlLangView());
}

Option<std::string> XmlNode::getContent() const {
  return type_ == TEXT ? optionOf(contentView()) : Option<std::string>();
}

std::vector<std::shared_ptr<XmlNode>> XmlNode::getChildren() const {
  std::vector<std::shared_ptr<XmlNode>> children;
  for (const XmlNode* child = firstChild(); child != nullptr; child = child->nextSibling()) {
    children.push_back(child->share());
  }
  return children;
}

std::shared_ptr<XmlNode> XmlNode::getFirstElementChild() const {
  return shareIfAny(firstElementChild());
}

std::shared_ptr<XmlNode> XmlNode::getNextElementSibling() const {
  return shareIfAny(nextElementSibling());
}

std::shared_ptr<XmlNode> XmlNode::getParent() const {
  return shareIfAny(parent_);
}

std::string_view XmlNode::nameView() const noexcept {
  return type_ == ELEMENT ? data_.element->name->view() : std::string_view();
}

std::string_view XmlNode::namespaceView() const noexcept {
  return type_ == ELEMENT ? viewOf(data_.element->name->namespaceUri) : std::string_view();
}

std::string_view XmlNode::contentView() const noexcept {
  return type_ == TEXT ? std::string_view(data_.text, size_) : std::string_view();
}

std::string_view XmlNode::attributeView(std::string_view name,
                                        std::string_view namespaceUri) const noexcept {
  if (type_ != ELEMENT) {
    return {};
  }
  const internal::XmlAttribute* attribute = data_.element->attributes();
  const internal::XmlAttribute* const end = attribute + size_;
  for (; attribute != end; ++attribute) {
    const internal::XmlSymbol& symbol = *attribute->name;
    if (isSameName(symbol.view(), name) && isSame(symbol.namespaceUri, namespaceUri)) {
      return {attribute->value, attribute->valueSize};
    }
  }
  return {};
}

std::size_t XmlNode::attributeCount() const noexcept {
  return type_ == ELEMENT ? size_ : 0;
}

XmlNode::Attribute XmlNode::attributeAt(std::size_t index) const noexcept {
  const internal::XmlAttribute& attribute = data_.element->attributes()[index];
  return {attribute.name->view(),
          viewOf(attribute.name->namespaceUri),
          {attribute.value, attribute.valueSize}};
}

std::string_view XmlNode::xmlLangView() const noexcept {
  for (const XmlNode* node = this; node != nullptr; node = node->parent_) {
    const std::string_view lang = node->attributeView("lang", XML_NAMESPACE);
    if (lang.data() != nullptr) {
      return lang;
    }
  }
  return {};
}

const XmlNode* XmlNode::firstChild() const noexcept {
  return type_ == ELEMENT ? data_.element->firstChild : nullptr;
}

const XmlNode* XmlNode::firstElementChild() const noexcept {
  return elementFrom(firstChild());
}

const XmlNode* XmlNode::nextElementSibling() const noexcept {
  return elementFrom(nextSibling());
}

std::shared_ptr<XmlNode> XmlNode::share() const {
  const XmlNode* root = this;
  while (root->parent_ != nullptr) {
    root = root->parent_;
  }
  return root->document_->share(this);
}

}  // namespace orvane::nimbrel::util
