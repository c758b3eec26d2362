#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "util/Api.h"
#include "util/Option.h"
#include "util/SharedPtr.h"

namespace orvane::nimbrel::util {

/// The namespace of `xml:lang` (Namespaces in XML 1.0).
inline constexpr char XML_NAMESPACE[] = "http://www.w3.org/XML/1998/namespace";

class XmlDocument;
namespace internal {
class XmlTreeBuilder;
struct XmlElementData;
}  // namespace internal

/// A read-only node of an XML document: an element, a text, a comment or a processing instruction.
///
/// Nodes live inside their document. A shared pointer to a node keeps the document alive and costs
/// no heap allocation; null means "none". The members that hand out plain pointers and views are
/// for walking a tree without counting references: what they give lives as long as the document.
/// Immutable: any number of threads may read at once. All text is UTF-8. Members that copy
/// throw only `std::bad_alloc`, and change nothing (strong guarantee).
class NIMBREL_UTIL_API XmlNode {
 public:
  /// The values of `getNodeType()`.
  enum Type : int {
    ELEMENT = 2,
    TEXT = 4,  ///< character data, CDATA sections included
    PROCESSING_INSTRUCTION = 7,
    COMMENT = 8
  };

  XmlNode(const XmlNode&) = delete;
  XmlNode& operator=(const XmlNode&) = delete;

  /// The local name of an element; as written when its prefix is not declared. Empty for others.
  [[nodiscard]] std::string getName() const;
  /// The namespace IRI of an element; None when it has none.
  [[nodiscard]] Option<std::string> getNamespace() const;
  /// The value of an attribute without namespace; None when absent or `name` is null.
  [[nodiscard]] Option<std::string> getAttribute(const char* name) const;
  /// The value of an attribute by local name and namespace IRI; a null IRI asks for one without
  /// namespace. None when absent or `name` is null.
  [[nodiscard]] Option<std::string> getAttribute(const char* name, const char* namespaceUri) const;
  /// The `xml:lang` of the nearest ancestor or of the node itself (XML 1.0, 2.12), as written;
  /// empty when none applies. An empty `xml:lang` ends the search.
  [[nodiscard]] std::string getXmlLang() const;
  /// The text of a text node; None for all others.
  [[nodiscard]] Option<std::string> getContent() const;
  /// All child nodes in document order.
  [[nodiscard]] std::vector<std::shared_ptr<XmlNode>> getChildren() const;
  /// The first child that is an element, or null.
  [[nodiscard]] std::shared_ptr<XmlNode> getFirstElementChild() const;
  /// The next sibling that is an element, or null.
  [[nodiscard]] std::shared_ptr<XmlNode> getNextElementSibling() const;
  /// The parent element; null at the root.
  [[nodiscard]] std::shared_ptr<XmlNode> getParent() const;
  /// One of `Type`.
  [[nodiscard]] int getNodeType() const noexcept { return static_cast<int>(type_); }
  /// The line, counted from 1, in which an element or a text begins and anything else ends; for a
  /// node that came out of an entity, the line of the reference. 0 when unknown, and from line
  /// 268,435,456 on.
  [[nodiscard]] unsigned int getLineNumber() const noexcept { return line_; }

  /// The local name of an element without copying; empty for other nodes.
  [[nodiscard]] std::string_view nameView() const noexcept;
  /// The namespace IRI without copying; a view with null data when there is none.
  [[nodiscard]] std::string_view namespaceView() const noexcept;
  /// The text of a text node without copying; empty for other nodes.
  [[nodiscard]] std::string_view contentView() const noexcept;
  /// The value of an attribute without copying; a view with null data when it is absent. A
  /// `namespaceUri` with null data asks for an attribute without namespace.
  [[nodiscard]] std::string_view attributeView(std::string_view name,
                                               std::string_view namespaceUri = {}) const noexcept;
  /// An attribute without copying. `namespaceUri` has null data when there is none.
  struct Attribute {
    std::string_view name;          ///< the local name
    std::string_view namespaceUri;  ///< the namespace IRI
    std::string_view value;         ///< the value, as XML normalises it
  };
  /// The number of attributes of an element, namespace declarations left out; 0 for other nodes.
  [[nodiscard]] std::size_t attributeCount() const noexcept;
  /// An attribute by its place among `attributeCount()` in document order.
  [[nodiscard]] Attribute attributeAt(std::size_t index) const noexcept;
  /// The language that `getXmlLang()` gives, without copying; empty when none applies.
  [[nodiscard]] std::string_view xmlLangView() const noexcept;
  /// The first child node of any type, or null.
  [[nodiscard]] const XmlNode* firstChild() const noexcept;
  /// The next sibling of any type, or null.
  [[nodiscard]] const XmlNode* nextSibling() const noexcept {
    return parent_ == nullptr ? nullptr : nextSibling_;
  }
  /// The first child that is an element, or null.
  [[nodiscard]] const XmlNode* firstElementChild() const noexcept;
  /// The next sibling that is an element, or null.
  [[nodiscard]] const XmlNode* nextElementSibling() const noexcept;
  /// The parent element; null at the root.
  [[nodiscard]] const XmlNode* parent() const noexcept { return parent_; }
  /// A shared pointer to this node, keeping its document alive. Never allocates.
  [[nodiscard]] std::shared_ptr<XmlNode> share() const;

 private:
  friend class internal::XmlTreeBuilder;
  XmlNode(const XmlNode* parent, Type type, unsigned int line) noexcept
      : parent_(parent),
        line_(line > MAX_LINE ? 0U : line & MAX_LINE),
        type_(static_cast<unsigned int>(type) & 0xFU) {}

  static constexpr unsigned int MAX_LINE = 0xFFFFFFF;

  // A document is mostly nodes, so each byte less here makes it a good deal smaller.
  const XmlNode* parent_;
  union {
    const XmlNode* nextSibling_ = nullptr;
    const XmlDocument* document_;  // of the root, which has no sibling
  };
  union {
    const char* text = nullptr;               // of a text node
    const internal::XmlElementData* element;  // of an element
  } data_;
  std::uint32_t size_ = 0;  // bytes of the text, or number of attributes
  std::uint32_t line_ : 28;
  std::uint32_t type_ : 4;
};

}  // namespace orvane::nimbrel::util
