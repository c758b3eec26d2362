#include "util/UnicodeUtilICU.h"

namespace orvane::nimbrel::util {

UnicodeUtilICU::UnicodeUtilICU() = default;
UnicodeUtilICU::~UnicodeUtilICU() = default;

}  // namespace orvane::nimbrel::util
