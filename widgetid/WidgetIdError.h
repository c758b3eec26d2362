#pragma once

#include <stdexcept>
#include <string>

#include "config/Api.h"

namespace orvane::zel::config {

/// No identity can be derived from an identifier. `what()` is one line in English.
class NIMBREL_CONFIG_API WidgetIdError : public std::runtime_error {
 public:
  /// `message` is what `what()` says.
  explicit WidgetIdError(const std::string& message);
  WidgetIdError(const WidgetIdError&) = default;
  WidgetIdError& operator=(const WidgetIdError&) = default;
  ~WidgetIdError() override;
};

}  // namespace orvane::zel::config
