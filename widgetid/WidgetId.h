#pragma once

#include "config/Api.h"

namespace orvane::zel::config {

/// The identity of an installed web application: its identifier and the names derived from it.
///
/// Immutable after construction: accessors may be called from any thread and never throw. Every
/// pointer handed out is NUL-terminated, never null, and valid as long as the object.
class NIMBREL_CONFIG_API WidgetId {
 public:
  virtual ~WidgetId();

  /// The identifier as it was given.
  [[nodiscard]] virtual const char* toString() const = 0;
  /// The authority under which its content is served and its origin is judged.
  [[nodiscard]] virtual const char* toAuthority() const = 0;
  /// The name of the directory that holds its private data.
  [[nodiscard]] virtual const char* toDirectoryName() const = 0;
  /// The name of the directory that holds such directories.
  [[nodiscard]] virtual const char* topLevelApplicationDataDirectory() const = 0;

 protected:
  WidgetId() = default;
  WidgetId(const WidgetId&) = default;
  WidgetId& operator=(const WidgetId&) = default;
};

}  // namespace orvane::zel::config
