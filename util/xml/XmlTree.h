#pragma once

#include <cstdint>
#include <string_view>

#include "util/XmlNode.h"

// How a document lies in memory: nodes, names and texts one behind the other in an arena, none of
// them with a destructor, all of them immutable once the document is handed out.
namespace orvane::nimbrel::util::internal {

/// A name with its namespace, or the namespace itself; each stored once a document, so that equal
/// ones have the same address. Its bytes follow it.
struct XmlSymbol {
  const XmlSymbol* namespaceUri;  // null: none
  std::uint32_t size;

  [[nodiscard]] std::string_view view() const noexcept {
    return {reinterpret_cast<const char*>(this + 1), size};
  }
};

struct XmlAttribute {
  const XmlSymbol* name;
  const char* value;
  std::uint32_t valueSize;
};

/// What an element has beyond a node; its attributes follow it.
struct XmlElementData {
  const XmlSymbol* name;
  const XmlNode* firstChild;

  [[nodiscard]] const XmlAttribute* attributes() const noexcept {
    return reinterpret_cast<const XmlAttribute*>(this + 1);
  }
};
static_assert(sizeof(XmlElementData) % alignof(XmlAttribute) == 0);

}  // namespace orvane::nimbrel::util::internal
