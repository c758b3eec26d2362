#include "widgetid/ProductionWidgetId.h"

#include <stdexcept>

namespace orvane::zel::config {

ProductionWidgetId::ProductionWidgetId(const char* tavloApplicationId) {
  if (tavloApplicationId == nullptr) {
    throw std::invalid_argument("tavloApplicationId cannot be NULL.");
  }
  if (*tavloApplicationId == '\0') {
    throw std::invalid_argument("tavloApplicationId cannot be the empty string.");
  }
  tavloApplicationId_ = tavloApplicationId;
}

ProductionWidgetId::~ProductionWidgetId() = default;

const char* ProductionWidgetId::toString() const {
  return tavloApplicationId_.c_str();
}

const char* ProductionWidgetId::toAuthority() const {
  return tavloApplicationId_.c_str();
}

const char* ProductionWidgetId::toDirectoryName() const {
  return tavloApplicationId_.c_str();
}

const char* ProductionWidgetId::topLevelApplicationDataDirectory() const {
  return ".mirelda";
}

}  // namespace orvane::zel::config
