#pragma once

#include "util/Api.h"
#include "util/UnicodeUtil.h"

namespace orvane::nimbrel::util {

/// The Unicode service over ICU. Stateless; ICU loads no data for it.
class NIMBREL_UTIL_API UnicodeUtilICU : public UnicodeUtil {
 public:
  UnicodeUtilICU();
  ~UnicodeUtilICU() override;

  [[nodiscard]] bool isWhiteSpace(char32_t codePoint) const override;
};

}  // namespace orvane::nimbrel::util
