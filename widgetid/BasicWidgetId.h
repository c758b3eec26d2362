#pragma once

#include <string>

#include "config/Api.h"
#include "util/SharedPtr.h"
#include "widgetid/WidgetId.h"
#include "widgetid/WidgetIdParser.h"

namespace orvane::zel::config {

/// The identity of an application known by a widget identifier; its data lives under
/// ".mirelda_sandbox". Owns its strings. Copyable.
class NIMBREL_CONFIG_API BasicWidgetId : public WidgetId {
 public:
  /// Derives the authority, then the directory name; the parser is not kept. Throws
  /// `std::invalid_argument` "id cannot be NULL.", "id cannot be the empty string." or "idParser
  /// cannot be NULL.", tested in this order, and whatever the parser throws; then there is no
  /// object, and the parser is as it was (strong guarantee).
  BasicWidgetId(const char* id, std::shared_ptr<WidgetIdParser> idParser);
  ~BasicWidgetId() override;

  [[nodiscard]] const char* toString() const override;
  [[nodiscard]] const char* toAuthority() const override;
  [[nodiscard]] const char* toDirectoryName() const override;
  [[nodiscard]] const char* topLevelApplicationDataDirectory() const override;

 private:
  std::string id_;
  std::string authority_;
  std::string directoryName_;
};

}  // namespace orvane::zel::config
