#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

#include "util/XmlDocument.h"
#include "util/xml/XmlArena.h"
#include "util/xml/XmlLimits.h"
#include "util/xml/XmlSymbols.h"
#include "util/xml/XmlTree.h"

namespace orvane::nimbrel::util::internal {

/// Fills a document, node by node in document order. Lines are those of the document itself, in
/// which a tag, a text or anything else ends. Throws `std::bad_alloc`.
class XmlTreeBuilder {
 public:
  /// `inputSize` is what is known of the size of the document in bytes.
  explicit XmlTreeBuilder(std::size_t inputSize);
  XmlTreeBuilder(const XmlTreeBuilder&) = delete;
  XmlTreeBuilder& operator=(const XmlTreeBuilder&) = delete;

  /// No element has begun yet.
  [[nodiscard]] bool isBeforeRoot() const noexcept { return document_->root_ == nullptr; }

  /// The names of the document, each of which is to be found or added here.
  XmlSymbols& symbols() noexcept { return symbols_; }

  /// The line in which a tag or text begins that follows what came last; not known for the root.
  [[nodiscard]] unsigned int nextLine() const noexcept { return lastLine_; }

  /// An element, whose attributes have to follow. At most `XmlLimits::MAX_DEPTH` may be open.
  void startElement(const XmlSymbol* name, std::size_t attributeCount, unsigned int firstLine,
                    unsigned int lastLine);
  void addAttribute(const XmlSymbol* name, std::string_view value) {
    ::new (nextAttribute_++)
        XmlAttribute{name, copy(value), static_cast<std::uint32_t>(value.size())};
  }
  void endElement(unsigned int line) noexcept;

  /// Character data within an element; adjacent pieces make one text. Throws `XmlRejection` when it
  /// gets too long.
  void appendText(std::string_view text, unsigned int line);

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
  char* copy(std::string_view text) {
    char* const bytes = static_cast<char*>(arena_.allocate(text.size(), 1));
    std::memcpy(bytes, text.data(), text.size());
    return bytes;
  }

  std::shared_ptr<XmlDocument> document_;
  XmlArena& arena_;  // the document's
  XmlSymbols symbols_;

  struct OpenElement {
    XmlNode* node;
    XmlNode* lastChild;
  };
  std::array<OpenElement, XmlLimits::MAX_DEPTH> open_;  // from the root down
  std::size_t depth_ = 0;
  XmlAttribute* nextAttribute_ = nullptr;
  XmlNode* text_ = nullptr;  // the text node that grows; its bytes end at textEnd_
  char* textEnd_ = nullptr;
  std::size_t textCapacity_ = 0;
  unsigned int lastLine_ = 1;
};

}  // namespace orvane::nimbrel::util::internal
