#pragma once

#include <libxml/xmlstring.h>

#include <array>
#include <cstddef>
#include <memory>

#include "util/XmlDocument.h"
#include "util/xml/XmlArena.h"
#include "util/xml/XmlLimits.h"
#include "util/xml/XmlSymbols.h"
#include "util/xml/XmlTree.h"

namespace orvane::nimbrel::util::internal {

/// Fills a document, node by node in document order. Lines are those of the document itself, at
/// which a tag, a text or anything else ends. Throws `std::bad_alloc`.
class XmlTreeBuilder {
 public:
  /// `inputSize` is what is known of the size of the document in bytes.
  explicit XmlTreeBuilder(std::size_t inputSize);
  XmlTreeBuilder(const XmlTreeBuilder&) = delete;
  XmlTreeBuilder& operator=(const XmlTreeBuilder&) = delete;

  /// No element has begun yet.
  [[nodiscard]] bool isBeforeRoot() const noexcept { return document_->root_ == nullptr; }

  /// The line in which a tag or text begins that follows what came last; not known for the root.
  [[nodiscard]] unsigned int nextLine() const noexcept { return lastLine_; }

  /// An element with attributes, of which libxml2 hands out five pointers each: local name, prefix,
  /// namespace, value and its end. At most `XmlLimits::MAX_DEPTH` may be open.
  void startElement(const xmlChar* localName, const xmlChar* prefix, const xmlChar* uri,
                    const xmlChar* const* attributes, std::size_t attributeCount,
                    unsigned int firstLine, unsigned int lastLine);
  void endElement(unsigned int line) noexcept;

  /// Character data within an element; adjacent pieces make one text. False when it gets too long.
  [[nodiscard]] bool appendText(const char* text, std::size_t size, unsigned int line);

  /// A comment or instruction within an element.
  void appendOther(XmlNode::Type type, unsigned int line);

  [[nodiscard]] bool isInRoot() const noexcept { return depth_ > 0; }

  /// The document, once it is complete.
  std::shared_ptr<XmlDocument> take() noexcept { return std::move(document_); }

 private:
  void growText(std::size_t size);
  void endText(unsigned int line) noexcept;
  void link(XmlNode* node) noexcept;
  XmlNode* newNode(XmlNode::Type type, unsigned int line);
  char* copy(const char* text, std::size_t size);

  std::unique_ptr<XmlArena> newArena_;  // until the document takes it
  XmlArena& arena_;
  std::shared_ptr<XmlDocument> document_;
  XmlSymbols symbols_;

  struct OpenElement {
    XmlNode* node;
    XmlNode* lastChild;
  };
  std::array<OpenElement, XmlLimits::MAX_DEPTH> open_;  // from the root down
  std::size_t depth_ = 0;
  XmlNode* text_ = nullptr;  // the text node that grows; its bytes end at textEnd_
  char* textEnd_ = nullptr;
  std::size_t textCapacity_ = 0;
  unsigned int lastLine_ = 1;
};

}  // namespace orvane::nimbrel::util::internal
