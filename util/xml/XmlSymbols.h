#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "util/xml/XmlArena.h"
#include "util/xml/XmlTree.h"

namespace orvane::nimbrel::util::internal {

/// The names of one document, each stored once in its arena. They are found by the address of what
/// was read, since the dictionary of libxml2 keeps equal names of a document at the same.
class XmlSymbols {
 public:
  explicit XmlSymbols(XmlArena& arena) : arena_(arena), table_(new Entry[mask_ + 1]()) {}

  /// The name, or namespace, that was added from the address of its text and that of its namespace,
  /// which is null for none. Null when there is none yet.
  const XmlSymbol* find(const void* text, const void* namespaceAddress) noexcept {
    return entryFor(text, namespaceAddress).symbol;
  }

  /// Adds a name or namespace that is not found yet.
  const XmlSymbol* add(std::string_view text, const void* namespaceAddress,
                       const XmlSymbol* namespaceUri);

  /// A name whose prefix is not declared: both together make a name without a namespace. It is
  /// never found.
  const XmlSymbol* addPrefixed(std::string_view prefix, std::string_view local) {
    return store(nullptr, prefix, local);
  }

 private:
  struct Entry {
    const void* text;
    const void* namespaceAddress;
    const XmlSymbol* symbol;
  };

  /// Where a name is, or where it belongs.
  Entry& entryFor(const void* text, const void* namespaceAddress) noexcept {
    std::size_t place = hashOf(text, namespaceAddress) & mask_;
    while (table_[place].symbol != nullptr &&
           (table_[place].text != text || table_[place].namespaceAddress != namespaceAddress)) {
      place = (place + 1) & mask_;
    }
    return table_[place];
  }
  static std::size_t hashOf(const void* text, const void* namespaceAddress) noexcept {
    const auto mixed =
        static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(text)) +
        3 * static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(namespaceAddress));
    return static_cast<std::size_t>((mixed * 0x9E3779B97F4A7C15ULL) >> 32);
  }

  const XmlSymbol* store(const XmlSymbol* namespaceUri, std::string_view prefix,
                         std::string_view name);
  void grow();

  XmlArena& arena_;
  std::size_t mask_ = 127;
  std::unique_ptr<Entry[]> table_;  // a power of two of them, at most half taken
  std::size_t count_ = 0;
};

}  // namespace orvane::nimbrel::util::internal
