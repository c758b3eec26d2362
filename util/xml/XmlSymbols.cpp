#include "util/xml/XmlSymbols.h"

#include <cstring>
#include <new>
#include <utility>

namespace orvane::nimbrel::util::internal {

const XmlSymbol* XmlSymbols::store(const XmlSymbol* namespaceUri, std::string_view prefix,
                                   std::string_view name) {
  const std::size_t size = name.size() + (prefix.empty() ? 0 : prefix.size() + 1);
  void* const memory = arena_.allocate(sizeof(XmlSymbol) + size, alignof(XmlSymbol));
  auto* const symbol = ::new (memory) XmlSymbol{namespaceUri, static_cast<std::uint32_t>(size)};
  char* bytes = reinterpret_cast<char*>(symbol + 1);
  if (!prefix.empty()) {
    std::memcpy(bytes, prefix.data(), prefix.size());
    bytes[prefix.size()] = ':';
    bytes += prefix.size() + 1;
  }
  std::memcpy(bytes, name.data(), name.size());
  return symbol;
}

const XmlSymbol* XmlSymbols::add(std::string_view text, const void* namespaceAddress,
                                 const XmlSymbol* namespaceUri) {
  const XmlSymbol* const symbol = store(namespaceUri, {}, text);
  if (++count_ * 2 > mask_) {
    grow();
  }
  entryFor(text.data(), namespaceAddress) = {text.data(), namespaceAddress, symbol};
  return symbol;
}

void XmlSymbols::grow() {
  const std::size_t oldSize = mask_ + 1;
  const std::unique_ptr<Entry[]> old =
      std::exchange(table_, std::unique_ptr<Entry[]>(new Entry[2 * oldSize]()));
  mask_ = 2 * oldSize - 1;
  for (std::size_t i = 0; i < oldSize; ++i) {
    if (old[i].symbol != nullptr) {
      entryFor(old[i].text, old[i].namespaceAddress) = old[i];
    }
  }
}

}  // namespace orvane::nimbrel::util::internal
