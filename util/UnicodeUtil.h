#pragma once

#include "util/Api.h"

namespace orvane::nimbrel::util {

/// The Unicode knowledge that a `LocalizableString` needs; a host may derive its own.
///
/// Implementations are immutable: every operation may run on several threads at once.
class NIMBREL_UTIL_API UnicodeUtil {
 public:
  virtual ~UnicodeUtil();

  /// Whether a code point has Unicode's White_Space property, which ICU knows without loading data.
  /// False for what is no code point. Never called for ASCII, whose white space is fixed: U+0009 to
  /// U+000D and U+0020. This one never throws; an override may.
  [[nodiscard]] virtual bool isWhiteSpace(char32_t codePoint) const;

 protected:
  UnicodeUtil() = default;
  UnicodeUtil(const UnicodeUtil&) = default;
  UnicodeUtil& operator=(const UnicodeUtil&) = default;
};

}  // namespace orvane::nimbrel::util
