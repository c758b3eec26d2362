#pragma once

#include <cstddef>
#include <memory>

#include "util/Api.h"
#include "util/SharedPtr.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::util {

namespace internal {
class XmlArena;
class XmlTreeBuilder;
}  // namespace internal

/// A read-only XML document; it owns every node of its tree.
///
/// Lives in a `std::shared_ptr`, and every node that is handed out as a shared pointer keeps it
/// alive. Immutable: it and its nodes may be read by any number of threads at once.
class NIMBREL_UTIL_API XmlDocument : public std::enable_shared_from_this<XmlDocument> {
 public:
  ~XmlDocument();
  XmlDocument(const XmlDocument&) = delete;
  XmlDocument& operator=(const XmlDocument&) = delete;

  /// The root element, or null when there is none. Never allocates.
  [[nodiscard]] std::shared_ptr<XmlNode> getDocumentElement() const;

 private:
  friend class internal::XmlTreeBuilder;
  friend class XmlNode;
  struct BuilderKey {};

 public:
  /// For the tree builder only. `inputSize` is what is known of the size in bytes.
  XmlDocument(BuilderKey, std::size_t inputSize);

 private:
  [[nodiscard]] std::shared_ptr<XmlNode> share(const XmlNode* node) const;

  std::unique_ptr<internal::XmlArena> arena_;
  const XmlNode* root_ = nullptr;
};

}  // namespace orvane::nimbrel::util
