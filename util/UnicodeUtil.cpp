#include "util/UnicodeUtil.h"

#include <unicode/uchar.h>

namespace orvane::nimbrel::util {

UnicodeUtil::~UnicodeUtil() = default;

bool UnicodeUtil::isWhiteSpace(char32_t codePoint) const {
  // ICU's type is signed: what is no code point must not reach it as a negative number.
  return codePoint <= UCHAR_MAX_VALUE && u_isUWhiteSpace(static_cast<UChar32>(codePoint)) != 0;
}

}  // namespace orvane::nimbrel::util
