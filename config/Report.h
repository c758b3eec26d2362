#pragma once

#include <string>
#include <string_view>

#include "config/Observation.h"
#include "util/Option.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::config::detail {

/// Tells the observer of a parser, if it has one, what is lost of an element. Where it is called,
/// the sentence for the author is the comment for the reader.
class Report {
 public:
  /// Nobody listens.
  constexpr Report() noexcept = default;
  /// Where `observation` is null, nobody listens; so it is for a null element.
  Report(Observation* observation, const util::XmlNode* element) noexcept
      : observation_(element == nullptr ? nullptr : observation), element_(element) {}

  /// Whether somebody listens; to be asked before a sentence is made up.
  explicit operator bool() const noexcept { return observation_ != nullptr; }

  /// The element is lost.
  void operator()(LegacyCode code, std::string_view reason,
                  std::string_view suggestion = {}) const {
    if (observation_ != nullptr) {
      observation_->tell(code, *element_, {}, {}, reason, suggestion);
    }
  }
  /// The value of an attribute is lost, or the element for its sake. A `value` with null data, or
  /// None, stands for an absent attribute.
  void operator()(LegacyCode code, std::string_view attribute, std::string_view value,
                  std::string_view reason, std::string_view suggestion = {}) const {
    if (observation_ != nullptr) {
      observation_->tell(code, *element_, attribute, value, reason, suggestion);
    }
  }
  /// @overload
  void operator()(LegacyCode code, std::string_view attribute,
                  const util::Option<std::string>& value, std::string_view reason,
                  std::string_view suggestion = {}) const {
    if (observation_ != nullptr) {
      observation_->tell(code, *element_, attribute,
                         value ? std::string_view(value.get()) : std::string_view(), reason,
                         suggestion);
    }
  }

  /// A key that is known and stood before in an element of this name loses one of its values.
  void ifRepeated(std::string_view attribute, std::string_view key, std::string_view reason) const {
    if (observation_ != nullptr && observation_->isRepeated(*element_->parent(), key)) {
      observation_->tell(LegacyCode::REPEATED_KEY, *element_, attribute, key, reason, {});
    }
  }

 private:
  Observation* observation_ = nullptr;
  const util::XmlNode* element_ = nullptr;
};

}  // namespace orvane::nimbrel::config::detail
