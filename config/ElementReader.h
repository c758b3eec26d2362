#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "config/ParseObserver.h"
#include "util/Option.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::config::detail {

/// `EXTENSION_NAMESPACE`, whose length need not be counted.
[[nodiscard]] std::string_view extensionNamespace() noexcept;

/// The node. Throws `std::invalid_argument` "node cannot be NULL" for none.
const util::XmlNode& requireNode(const std::shared_ptr<util::XmlNode>& node);

/// The value of an attribute with white space squeezed and trimmed; None when it is absent. A
/// namespace with null data is none.
[[nodiscard]] util::Option<std::string> readAttribute(const util::XmlNode& node,
                                                      std::string_view name,
                                                      std::string_view namespaceUri);

/// Reads the attributes of one element by their descriptions, and reports to the observer of a
/// parser what is ignored of them. Without an observer a report is one test of a pointer.
class ElementReader {
 public:
  /// Both are only referred to; `observer` may be null.
  ElementReader(const util::XmlNode& element, ParseObserver* observer) noexcept
      : element_(element), observer_(observer) {}

  /// The value with white space squeezed and trimmed; None when the attribute is absent.
  [[nodiscard]] util::Option<std::string> text(const AttributeDescription& attribute) const;
  /// The same; an absent attribute is reported.
  [[nodiscard]] util::Option<std::string> presentText(const AttributeDescription& attribute) const;
  /// The same; an empty value also is reported and gives None.
  [[nodiscard]] util::Option<std::string> filledText(const AttributeDescription& attribute) const;

  /// None when the attribute is absent or, which is reported, no number.
  [[nodiscard]] util::Option<unsigned int> number(const AttributeDescription& attribute) const;
  /// The same for a width or height, which is not 0.
  [[nodiscard]] util::Option<unsigned int> size(const AttributeDescription& attribute) const;
  /// Nothing when the attribute is absent or, which is reported, neither "true" nor "false".
  [[nodiscard]] std::optional<bool> boolean(const AttributeDescription& attribute) const;

  /// Reports something about the element itself. Always false, for a handler that ends with it.
  bool report(FindingCode code) const { return tell(code, nullptr, {}); }
  /// Reports something about an attribute; `value` has null data when there is none.
  bool report(FindingCode code, const AttributeDescription& attribute,
              std::string_view value = {}) const {
    return tell(code, &attribute, value);
  }
  /// The same for a value that may be absent.
  bool report(FindingCode code, const AttributeDescription& attribute,
              const util::Option<std::string>& value) const {
    return tell(code, &attribute, value ? std::string_view(value.get()) : std::string_view());
  }

 private:
  bool tell(FindingCode code, const AttributeDescription* attribute, std::string_view value) const {
    if (observer_ != nullptr) {
      observer_->onFinding({code, &element_, attribute, value, element_.getLineNumber(), 0, {}});
    }
    return false;
  }

  const util::XmlNode& element_;
  ParseObserver* observer_;
};

}  // namespace orvane::nimbrel::config::detail
