#pragma once

#include <optional>
#include <string_view>

#include "config/Report.h"
#include "util/LocalizableString.h"
#include "util/Option.h"
#include "util/XmlNode.h"

// The value parsers of `ConfigRules` without exceptions, for handlers to which a bad value is an
// ordinary thing.
namespace orvane::nimbrel::config::detail {

/// The value of an attribute without namespace, trimmed, for readers to which white space within
/// the value makes no difference. A view with null data when it is absent. Never copies.
[[nodiscard]] std::string_view trimmedAttribute(const util::XmlNode& node,
                                                std::string_view name) noexcept;

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

/// A number without which a document is refused: what is no number ends the parse. Throws as
/// `ConfigRules::parseNonNegativeInteger` does.
[[nodiscard]] unsigned int readCounter(const std::string& text, const Report& lost);

/// A number that is dropped when it is none.
[[nodiscard]] util::Option<unsigned int> readNumber(std::string_view text,
                                                    std::string_view attribute, const Report& lost);

/// A width or height: None for a view with null data, for what is no number and for 0.
[[nodiscard]] util::Option<unsigned int> readSize(std::string_view text,
                                                  std::string_view attribute = {},
                                                  const Report& lost = {});

/// Nothing for what is no value of "dir".
[[nodiscard]] std::optional<util::LocalizableString::Direction> readDirection(
    std::string_view text) noexcept;

/// The value of "dir" that another text was meant to be; empty when that is not certain.
[[nodiscard]] std::string_view suggestedDirection(std::string_view text) noexcept;

/// Nothing for what is neither "true" nor "false".
[[nodiscard]] std::optional<bool> readBoolean(std::string_view text) noexcept;

/// An attribute that is a boolean. Nothing when it is absent or no boolean, of which `reason` is
/// told.
[[nodiscard]] std::optional<bool> readBooleanAttribute(const util::XmlNode& node,
                                                       std::string_view name, const Report& lost,
                                                       std::string_view reason);

}  // namespace orvane::nimbrel::config::detail
