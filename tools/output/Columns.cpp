#include "tools/output/Columns.h"

#include <unicode/uchar.h>

#include "util/Utf8.h"

namespace orvane::nimbrel::tools {
namespace {

using util::internal::decodeUtf8;
using util::internal::NOT_UTF8;

std::size_t widthOf(char32_t character) noexcept {
  if (character < 0x80 || character == NOT_UTF8) {
    return 1;
  }
  const auto codePoint = static_cast<UChar32>(character);
  if ((U_GET_GC_MASK(codePoint) & (U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK)) != 0) {
    return 0;
  }
  const int kind = u_getIntPropertyValue(codePoint, UCHAR_EAST_ASIAN_WIDTH);
  return kind == U_EA_WIDE || kind == U_EA_FULLWIDTH ? 2 : 1;
}

}  // namespace

std::size_t width(std::string_view text) noexcept {
  std::size_t columns = 0;
  for (std::size_t at = 0; at < text.size();) {
    columns += widthOf(decodeUtf8(text, at));
  }
  return columns;
}

std::string_view firstColumns(std::string_view text, std::size_t count) noexcept {
  std::size_t end = 0;
  while (end < text.size()) {
    std::size_t next = end;
    const std::size_t columns = widthOf(decodeUtf8(text, next));
    if (columns > count) {
      break;
    }
    count -= columns;
    end = next;
  }
  return text.substr(0, end);
}

}  // namespace orvane::nimbrel::tools
