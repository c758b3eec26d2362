#include "util/XmlDocument.h"

#include "util/xml/XmlArena.h"

namespace orvane::nimbrel::util {

XmlDocument::XmlDocument(BuilderKey /*key*/, std::size_t inputSize)
    : arena_(std::make_unique<internal::XmlArena>(inputSize)) {}

XmlDocument::~XmlDocument() = default;

std::shared_ptr<XmlNode> XmlDocument::getDocumentElement() const {
  return share(root_);
}

std::shared_ptr<XmlNode> XmlDocument::share(const XmlNode* node) const {
  if (node == nullptr) {
    return nullptr;
  }
  // Every member of a node is const; the pointer's type is what hosts expect.
  return {shared_from_this(), const_cast<XmlNode*>(node)};
}

}  // namespace orvane::nimbrel::util
