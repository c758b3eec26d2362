#include "widgetid/WidgetIdParser.h"

namespace orvane::zel::config {

WidgetIdParser::~WidgetIdParser() = default;

}  // namespace orvane::zel::config
