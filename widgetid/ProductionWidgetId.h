#pragma once

#include <string>

#include "config/Api.h"
#include "widgetid/WidgetId.h"

namespace orvane::zel::config {

/// The identity of an application known by the application store's id, which is all its names; its
/// data lives under ".mirelda". Owns its string. Copyable.
class NIMBREL_CONFIG_API ProductionWidgetId : public WidgetId {
 public:
  /// Throws `std::invalid_argument` "tavloApplicationId cannot be NULL." or "tavloApplicationId
  /// cannot be the empty string.". Nothing else is checked and nothing is changed. When it throws
  /// there is no object (strong guarantee).
  explicit ProductionWidgetId(const char* tavloApplicationId);
  ~ProductionWidgetId() override;

  [[nodiscard]] const char* toString() const override;
  [[nodiscard]] const char* toAuthority() const override;
  [[nodiscard]] const char* toDirectoryName() const override;
  [[nodiscard]] const char* topLevelApplicationDataDirectory() const override;

 private:
  std::string tavloApplicationId_;
};

}  // namespace orvane::zel::config
