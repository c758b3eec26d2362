#pragma once

#include "util/Api.h"

namespace orvane::nimbrel::util {

/// The Unicode knowledge that a `LocalizableString` needs; a host may supply its own.
///
/// Implementations are immutable: every operation may run on several threads at once.
class NIMBREL_UTIL_API UnicodeUtil {
 public:
  virtual ~UnicodeUtil();

  /// Whether a code point has Unicode's White_Space property. False for what is no code point.
  /// Never asked for ASCII, whose white space is fixed: U+0009 to U+000D and U+0020. May throw;
  /// ours does not.
  [[nodiscard]] virtual bool isWhiteSpace(char32_t codePoint) const = 0;

 protected:
  UnicodeUtil() = default;
  UnicodeUtil(const UnicodeUtil&) = default;
  UnicodeUtil& operator=(const UnicodeUtil&) = default;
};

}  // namespace orvane::nimbrel::util
