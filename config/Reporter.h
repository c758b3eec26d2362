#pragma once

#include <string>
#include <string_view>

#include "config/ParseObserver.h"
#include "util/Option.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::config::detail {

/// Reports what a parser decides on one element to its observer. Both may be null; then a report is
/// one test of a pointer.
class Reporter {
 public:
  Reporter(ParseObserver* observer, const util::XmlNode* element) noexcept
      : observer_(element == nullptr ? nullptr : observer), element_(element) {}

  /// The element itself is meant.
  void operator()(FindingCode code) const { report(code, nullptr, {}); }
  /// An attribute is meant; `value` has null data when it is absent.
  void operator()(FindingCode code, const AttributeDescription& attribute,
                  std::string_view value = {}) const {
    report(code, &attribute, value);
  }
  /// The same for a value that may be absent.
  void operator()(FindingCode code, const AttributeDescription& attribute,
                  const util::Option<std::string>& value) const {
    report(code, &attribute, value ? std::string_view(value.get()) : std::string_view());
  }

 private:
  void report(FindingCode code, const AttributeDescription* attribute,
              std::string_view value) const {
    if (observer_ != nullptr) {
      observer_->onFinding({code, element_, attribute, value, element_->getLineNumber(), 0, {}});
    }
  }

  ParseObserver* observer_;
  const util::XmlNode* element_;
};

}  // namespace orvane::nimbrel::config::detail
