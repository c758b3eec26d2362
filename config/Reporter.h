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

  /// `attribute` is empty when the element itself is meant; `value` has null data when the
  /// attribute is absent.
  void operator()(FindingCode code, std::string_view attribute = {},
                  std::string_view value = {}) const {
    if (observer_ != nullptr) {
      observer_->onFinding({code, element_, attribute, value, element_->getLineNumber(), 0, {}});
    }
  }
  /// The same for a value that may be absent.
  void operator()(FindingCode code, std::string_view attribute,
                  const util::Option<std::string>& value) const {
    (*this)(code, attribute, value ? std::string_view(value.get()) : std::string_view());
  }

 private:
  ParseObserver* observer_;
  const util::XmlNode* element_;
};

}  // namespace orvane::nimbrel::config::detail
