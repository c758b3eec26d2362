#pragma once

#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <string_view>

#include "util/XmlNode.h"

// How a document lies in memory: nodes, names and texts one behind the other in an arena, none of
// them with a destructor, all of them immutable once the document is handed out.
namespace orvane::nimbrel::util::internal {

/// The memory of one document; everything in it is freed at once.
class XmlArena : public std::pmr::monotonic_buffer_resource {
 public:
  using monotonic_buffer_resource::monotonic_buffer_resource;
};

/// A name or namespace, stored once a document; its bytes follow it.
struct XmlSymbol {
  std::uint32_t size;

  [[nodiscard]] std::string_view view() const noexcept {
    return {reinterpret_cast<const char*>(this + 1), size};
  }
};

struct XmlAttribute {
  const XmlSymbol* name;
  const XmlSymbol* namespaceUri;  // null: none
  const char* value;
  std::uint32_t valueSize;
};

/// What an element has beyond a node; its attributes follow it.
struct XmlElementData {
  const XmlSymbol* name;
  const XmlSymbol* namespaceUri;  // null: none
  const XmlNode* firstChild;

  [[nodiscard]] const XmlAttribute* attributes() const noexcept {
    return reinterpret_cast<const XmlAttribute*>(this + 1);
  }
};
static_assert(sizeof(XmlElementData) % alignof(XmlAttribute) == 0);

}  // namespace orvane::nimbrel::util::internal
