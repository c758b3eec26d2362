#include "widgetid/WidgetId.h"

namespace orvane::zel::config {

WidgetId::~WidgetId() = default;

}  // namespace orvane::zel::config
