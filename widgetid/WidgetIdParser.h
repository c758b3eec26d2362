#pragma once

#include <string>

#include "config/Api.h"

namespace orvane::zel::config {

/// Derives an application's names from its identifier.
///
/// Implementations are immutable. With the library's own mungers, const members may run on several
/// threads at once, and one that throws has changed nothing (strong guarantee); with a host's, as
/// far as these keep to it.
class NIMBREL_CONFIG_API WidgetIdParser {
 public:
  virtual ~WidgetIdParser();

  /// The authority. Throws `std::invalid_argument` for a null identifier, and what the
  /// implementation names when there is none.
  virtual std::string deriveWidgetIdAuthority(const char* widgetId) const = 0;
  /// The directory name. Throws as above.
  virtual std::string deriveDirectoryName(const char* widgetId) const = 0;

 protected:
  WidgetIdParser() = default;
  WidgetIdParser(const WidgetIdParser&) = default;
  WidgetIdParser& operator=(const WidgetIdParser&) = default;
};

}  // namespace orvane::zel::config
