#include "util/UnicodeUtil.h"

namespace orvane::nimbrel::util {

UnicodeUtil::~UnicodeUtil() = default;

}  // namespace orvane::nimbrel::util
