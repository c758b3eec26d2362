#include "widgetid/BasicWidgetId.h"

#include <stdexcept>

namespace orvane::zel::config {

// NOLINTNEXTLINE(performance-unnecessary-value-param): hosts were compiled against a value.
BasicWidgetId::BasicWidgetId(const char* id, std::shared_ptr<WidgetIdParser> idParser) {
  if (id == nullptr) {
    throw std::invalid_argument("id cannot be NULL.");
  }
  if (*id == '\0') {
    throw std::invalid_argument("id cannot be the empty string.");
  }
  if (idParser == nullptr) {
    throw std::invalid_argument("idParser cannot be NULL.");
  }
  id_ = id;
  authority_ = idParser->deriveWidgetIdAuthority(id);
  directoryName_ = idParser->deriveDirectoryName(id);
}

BasicWidgetId::~BasicWidgetId() = default;

const char* BasicWidgetId::toString() const {
  return id_.c_str();
}

const char* BasicWidgetId::toAuthority() const {
  return authority_.c_str();
}

const char* BasicWidgetId::toDirectoryName() const {
  return directoryName_.c_str();
}

const char* BasicWidgetId::topLevelApplicationDataDirectory() const {
  return ".mirelda_sandbox";
}

}  // namespace orvane::zel::config
