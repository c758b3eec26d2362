#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "config/ElementDescription.h"
#include "config/Reporter.h"
#include "util/LocalizableString.h"
#include "util/Option.h"
#include "util/XmlNode.h"

// The value parsers of `ConfigRules` without exceptions, for handlers to which a bad value is an
// ordinary thing.
namespace orvane::nimbrel::config::detail {

/// The node. Throws `std::invalid_argument` "node cannot be NULL" for none.
[[nodiscard]] const util::XmlNode& requireNode(const std::shared_ptr<util::XmlNode>& node);

/// The value of an attribute with white space squeezed and trimmed; None when it is absent. A
/// namespace with null data is none.
[[nodiscard]] util::Option<std::string> readAttribute(const util::XmlNode& node,
                                                      std::string_view name,
                                                      std::string_view namespaceUri);

/// The same of an attribute that is described.
[[nodiscard]] util::Option<std::string> readAttribute(const util::XmlNode& node,
                                                      const AttributeDescription& attribute);

/// The same of a node that a caller handed in.
[[nodiscard]] inline util::Option<std::string> readAttribute(
    const std::shared_ptr<util::XmlNode>& node, const AttributeDescription& attribute) {
  return readAttribute(requireNode(node), attribute);
}

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

/// A number that a document must have right: what is no number ends the parse. Throws as
/// `ConfigRules::parseNonNegativeInteger` does.
[[nodiscard]] unsigned int readCounter(const std::string& text,
                                       const AttributeDescription& attribute,
                                       const Reporter& report);

/// None, which is reported, for what is no number.
[[nodiscard]] util::Option<unsigned int> readNumber(std::string_view text,
                                                    const AttributeDescription& attribute,
                                                    const Reporter& report);

/// A width or height: None for what is no number and for 0.
[[nodiscard]] util::Option<unsigned int> readSize(std::string_view text) noexcept;

/// An attribute that is a size. None when it is absent or, which is reported, no size.
[[nodiscard]] util::Option<unsigned int> readSizeAttribute(const util::XmlNode& node,
                                                           const AttributeDescription& attribute,
                                                           const Reporter& report);

/// Nothing for what is no value of "dir".
[[nodiscard]] std::optional<util::LocalizableString::Direction> readDirection(
    std::string_view text) noexcept;

/// Nothing for what is neither "true" nor "false".
[[nodiscard]] std::optional<bool> readBoolean(std::string_view text) noexcept;

/// An attribute that is a boolean. Nothing when it is absent or, which is reported, no boolean.
[[nodiscard]] std::optional<bool> readBooleanAttribute(const util::XmlNode& node,
                                                       const AttributeDescription& attribute,
                                                       const Reporter& report);

/// Whether a value is one of the trigger words of a switch. What is not among its words is
/// reported.
[[nodiscard]] bool isTriggered(const SwitchWords& words, std::string_view value,
                               const AttributeDescription& attribute, const Reporter& report);

}  // namespace orvane::nimbrel::config::detail
