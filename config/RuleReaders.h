#pragma once

#include <optional>
#include <string_view>

// The value parsers of `ConfigRules` without exceptions, for handlers to which a bad value is an
// ordinary thing.
namespace orvane::nimbrel::config::internal {

enum class IntegerFault {
  NONE,
  NO_NUMBER,  ///< empty, or ends in white space
  TOO_LARGE   ///< above 32 bits
};

struct IntegerReading {
  unsigned int value;
  IntegerFault fault;
};

[[nodiscard]] IntegerReading readNonNegativeInteger(std::string_view text) noexcept;

/// Nothing for what is neither "true" nor "false".
[[nodiscard]] std::optional<bool> readBoolean(std::string_view text) noexcept;

}  // namespace orvane::nimbrel::config::internal
