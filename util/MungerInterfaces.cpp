#include "util/FilenameMunger.h"
#include "util/UriMunger.h"

namespace orvane::zel::util {

FilenameMunger::~FilenameMunger() = default;

UriMunger::~UriMunger() = default;

}  // namespace orvane::zel::util
