#include "widgetid/WidgetIdError.h"

namespace orvane::zel::config {

WidgetIdError::WidgetIdError(const std::string& message) : std::runtime_error(message) {}
WidgetIdError::~WidgetIdError() = default;

}  // namespace orvane::zel::config
