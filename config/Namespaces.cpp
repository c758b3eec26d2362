#include "config/Namespaces.h"

namespace orvane::nimbrel::config {

const char EXTENSION_NAMESPACE[] = NIMBREL_EXTENSION_NAMESPACE;  // set by the build

}  // namespace orvane::nimbrel::config
