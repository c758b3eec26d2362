#pragma once

#include <libxml/xmlstring.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "util/xml/XmlArena.h"
#include "util/xml/XmlTree.h"

namespace orvane::nimbrel::util::internal {

/// A text of libxml2's; none for a null pointer.
inline std::string_view asView(const xmlChar* text) noexcept {
  return text == nullptr ? std::string_view()
                         : std::string_view(reinterpret_cast<const char*>(text));
}

/// The names of one document, each stored once in its arena. Told apart by their addresses:
/// libxml2's dictionary gives equal names of a document the same.
class XmlSymbols {
 public:
  explicit XmlSymbols(XmlArena& arena) : arena_(arena), table_(new Entry[mask_ + 1]()) {}

  /// A qualified name. A prefix that is not declared stays part of the name.
  const XmlSymbol* intern(const xmlChar* localName, const xmlChar* prefix, const xmlChar* uri) {
    return prefix != nullptr && uri == nullptr ? store(nullptr, asView(prefix), asView(localName))
                                               : intern(localName, uri);
  }

 private:
  struct Entry {
    const xmlChar* name;
    const xmlChar* namespaceUri;  // null: none
    const XmlSymbol* symbol;
  };

  const XmlSymbol* intern(const xmlChar* name, const xmlChar* namespaceUri) {
    const XmlSymbol* const known = entryFor(name, namespaceUri).symbol;
    return known != nullptr ? known : internNew(name, namespaceUri);
  }
  /// Where a name is, or where it belongs.
  Entry& entryFor(const xmlChar* name, const xmlChar* namespaceUri) noexcept {
    std::size_t place = hashOf(name, namespaceUri) & mask_;
    while (table_[place].symbol != nullptr &&
           (table_[place].name != name || table_[place].namespaceUri != namespaceUri)) {
      place = (place + 1) & mask_;
    }
    return table_[place];
  }
  static std::size_t hashOf(const xmlChar* name, const xmlChar* namespaceUri) noexcept {
    const auto mixed =
        static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(name)) +
        3 * static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(namespaceUri));
    return static_cast<std::size_t>((mixed * 0x9E3779B97F4A7C15ULL) >> 32);
  }

  const XmlSymbol* internNew(const xmlChar* name, const xmlChar* namespaceUri);
  const XmlSymbol* store(const XmlSymbol* namespaceUri, std::string_view prefix,
                         std::string_view name);
  void grow();

  XmlArena& arena_;
  std::size_t mask_ = 127;
  std::unique_ptr<Entry[]> table_;  // a power of two of them, at most half taken
  std::size_t count_ = 0;
};

}  // namespace orvane::nimbrel::util::internal
