#pragma once

#include "util/Api.h"
#include "util/UnicodeUtil.h"

namespace orvane::nimbrel::util {

/// The Unicode service over ICU, as `UnicodeUtil` defines it. Stateless.
class NIMBREL_UTIL_API UnicodeUtilICU : public UnicodeUtil {
 public:
  UnicodeUtilICU();
  ~UnicodeUtilICU() override;
};

}  // namespace orvane::nimbrel::util
