#include "util/xml/XmlTreeBuilder.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace orvane::nimbrel::util::internal {

XmlTreeBuilder::XmlTreeBuilder(std::size_t inputSize)
    : document_(std::make_shared<XmlDocument>(XmlDocument::BuilderKey(), inputSize)),
      arena_(*document_->arena_),
      symbols_(arena_) {}

inline XmlNode* XmlTreeBuilder::newNode(XmlNode::Type type, unsigned int line) {
  const XmlNode* const parent = depth_ == 0 ? nullptr : open_[depth_ - 1].node;
  return ::new (arena_.allocate(sizeof(XmlNode), alignof(XmlNode))) XmlNode(parent, type, line);
}

void XmlTreeBuilder::startElement(const XmlSymbol* name, std::size_t attributeCount,
                                  unsigned int firstLine, unsigned int lastLine) {
  XmlNode* const node = newNode(XmlNode::ELEMENT, firstLine);
  auto* const element =
      ::new (arena_.allocate(sizeof(XmlElementData) + attributeCount * sizeof(XmlAttribute),
                             alignof(XmlElementData))) XmlElementData{name, nullptr};
  nextAttribute_ = reinterpret_cast<XmlAttribute*>(element + 1);
  node->data_.element = element;
  node->size_ = static_cast<std::uint32_t>(attributeCount);
  link(node);
  open_[depth_++] = {node, nullptr};
  endText(lastLine);
}

void XmlTreeBuilder::endElement(unsigned int line) noexcept {
  endText(line);
  if (depth_ > 0) {
    --depth_;
  }
}

void XmlTreeBuilder::appendText(std::string_view text, unsigned int line) {
  const unsigned int begin = std::exchange(lastLine_, line);
  if (text_ == nullptr) {
    XmlNode* const node = newNode(XmlNode::TEXT, begin);
    char* const bytes = copy(text);
    node->data_.text = bytes;
    node->size_ = static_cast<std::uint32_t>(text.size());
    link(node);
    text_ = node;
    textEnd_ = bytes + text.size();
    textCapacity_ = text.size();
    return;
  }
  if (text.size() > std::numeric_limits<std::uint32_t>::max() - text_->size_) {
    throw XmlRejection{"A text is too long"};
  }
  growText(text_->size_ + text.size());
  textEnd_ = std::copy(text.begin(), text.end(), textEnd_);
  text_->size_ += static_cast<std::uint32_t>(text.size());
}

void XmlTreeBuilder::growText(std::size_t size) {
  if (size <= textCapacity_) {
    return;
  }
  // The arena hands out bytes one behind the other, so the text usually just goes on.
  const std::size_t more = size - textCapacity_;
  char* const bytes = static_cast<char*>(arena_.allocate(more, 1));
  if (bytes == text_->data_.text + textCapacity_) {
    textCapacity_ += more;
    return;
  }
  const std::size_t oldSize = text_->size_;
  char* const moved = static_cast<char*>(arena_.allocate(2 * size, 1));
  std::memcpy(moved, text_->data_.text, oldSize);
  text_->data_.text = moved;
  textEnd_ = moved + oldSize;
  textCapacity_ = 2 * size;
}

void XmlTreeBuilder::appendOther(XmlNode::Type type, unsigned int line) {
  endText(line);
  link(newNode(type, line));
}

void XmlTreeBuilder::endText(unsigned int line) noexcept {
  text_ = nullptr;
  lastLine_ = line;
}

void XmlTreeBuilder::link(XmlNode* node) noexcept {
  if (depth_ == 0) {
    document_->root_ = node;
    node->document_ = document_.get();
    return;
  }
  OpenElement& parent = open_[depth_ - 1];
  if (parent.lastChild == nullptr) {
    const_cast<XmlElementData*>(parent.node->data_.element)->firstChild = node;
  } else {
    parent.lastChild->nextSibling_ = node;
  }
  parent.lastChild = node;
}

}  // namespace orvane::nimbrel::util::internal
