#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "util/LocalizableString.h"
#include "util/Option.h"
#include "util/XmlNode.h"

// The value parsers of `ConfigRules` without exceptions, for handlers to which a bad value is an
// ordinary thing.
namespace orvane::nimbrel::config::detail {

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

/// A width or height: None for what is no number and for 0.
[[nodiscard]] util::Option<unsigned int> readSize(std::string_view text) noexcept;

/// Nothing for what is no value of "dir".
[[nodiscard]] std::optional<util::LocalizableString::Direction> readDirection(
    std::string_view text) noexcept;

/// Nothing for what is neither "true" nor "false".
[[nodiscard]] std::optional<bool> readBoolean(std::string_view text) noexcept;

}  // namespace orvane::nimbrel::config::detail
