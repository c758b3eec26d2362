#include "util/xml/XmlTreeBuilder.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace orvane::nimbrel::util::internal {
namespace {

constexpr std::size_t MAX_BLOCK = 65536;

/// A typical document takes three bytes of tree for each of its own.
std::unique_ptr<XmlArena> newArena(std::size_t inputSize) {
  const std::size_t blockSize = std::clamp<std::size_t>(inputSize, 1024, MAX_BLOCK);
  return std::make_unique<XmlArena>(std::min(3 * blockSize, MAX_BLOCK), blockSize);
}

}  // namespace

XmlTreeBuilder::XmlTreeBuilder(std::size_t inputSize)
    : newArena_(newArena(inputSize)),
      arena_(*newArena_),
      document_(std::make_shared<XmlDocument>(XmlDocument::BuilderKey(), std::move(newArena_))),
      symbols_(arena_) {}

inline XmlNode* XmlTreeBuilder::newNode(XmlNode::Type type, unsigned int line) {
  const XmlNode* const parent = depth_ == 0 ? nullptr : open_[depth_ - 1].node;
  return ::new (arena_.allocate(sizeof(XmlNode), alignof(XmlNode))) XmlNode(parent, type, line);
}

inline char* XmlTreeBuilder::copy(const char* text, std::size_t size) {
  char* const bytes = static_cast<char*>(arena_.allocate(size, 1));
  std::memcpy(bytes, text, size);
  return bytes;
}

void XmlTreeBuilder::startElement(const xmlChar* localName, const xmlChar* prefix,
                                  const xmlChar* uri, const xmlChar* const* attributes,
                                  std::size_t attributeCount, unsigned int firstLine,
                                  unsigned int lastLine) {
  XmlNode* const node = newNode(XmlNode::ELEMENT, firstLine);
  auto* const element = ::new (arena_.allocate(
      sizeof(XmlElementData) + attributeCount * sizeof(XmlAttribute), alignof(XmlElementData)))
      XmlElementData{symbols_.intern(localName, prefix, uri), nullptr};
  node->data_.element = element;
  auto* copies = reinterpret_cast<XmlAttribute*>(element + 1);
  for (std::size_t i = 0; i < attributeCount; ++i, attributes += 5) {
    const auto size = static_cast<std::size_t>(attributes[4] - attributes[3]);
    ::new (copies++) XmlAttribute{symbols_.intern(attributes[0], attributes[1], attributes[2]),
                                  copy(reinterpret_cast<const char*>(attributes[3]), size),
                                  static_cast<std::uint32_t>(size)};
  }
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

bool XmlTreeBuilder::appendText(const char* text, std::size_t size, unsigned int line) {
  const unsigned int begin = std::exchange(lastLine_, line);
  if (text_ == nullptr) {
    XmlNode* const node = newNode(XmlNode::TEXT, begin);
    char* const bytes = copy(text, size);
    node->data_.text = bytes;
    node->size_ = static_cast<std::uint32_t>(size);
    link(node);
    text_ = node;
    textEnd_ = bytes + size;
    textCapacity_ = size;
    return true;
  }
  if (size > std::numeric_limits<std::uint32_t>::max() - text_->size_) {
    return false;
  }
  growText(text_->size_ + size);
  std::memcpy(textEnd_, text, size);
  textEnd_ += size;
  text_->size_ = static_cast<std::uint32_t>(text_->size_ + size);
  return true;
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
