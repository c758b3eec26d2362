#include "config/Namespaces.h"

#include "config/ElementReader.h"

namespace orvane::nimbrel::config {

const char EXTENSION_NAMESPACE[] = NIMBREL_EXTENSION_NAMESPACE;  // set by the build

std::string_view detail::extensionNamespace() noexcept {
  return {EXTENSION_NAMESPACE, sizeof EXTENSION_NAMESPACE - 1};
}

}  // namespace orvane::nimbrel::config
