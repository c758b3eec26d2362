#pragma once

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "config/LegacyFinding.h"
#include "config/ParseObserver.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::config::detail {

/// The name of an element in findings: extension elements have the prefix "tavlo:" whatever the
/// document's.
[[nodiscard]] std::string findingName(std::string_view name, std::string_view namespaceUri);

/// What a parser with an observer knows for it of the document at hand. Without an observer there
/// is none, and nothing here costs anything.
class Observation {
 public:
  explicit Observation(std::shared_ptr<ParseObserver> observer) : observer_(std::move(observer)) {}

  /// Forgets the last document.
  void beginDocument();
  /// A child of the root is visited. One that is visited again, because its locale is listed twice,
  /// says nothing more.
  void visit(const util::XmlNode& element);
  /// The child of the root with this element's name that was visited first.
  [[nodiscard]] const util::XmlNode* firstLike(const util::XmlNode& element) const;
  /// Whether a key stands in an element of this name for the second time, all of them counted.
  [[nodiscard]] bool isRepeated(const util::XmlNode& parent, std::string_view key);

  /// Tells of a decision on an element.
  void tell(LegacyCode code, const util::XmlNode& element, std::string_view attribute,
            std::string_view value, std::string_view reason, std::string_view suggestion);
  /// Tells of a decision on the document.
  void tell(const LegacyFinding& finding, const util::XmlNode* element = nullptr);

 private:
  std::shared_ptr<ParseObserver> observer_;
  bool again_ = false;  // the element at hand was visited before
  std::unordered_set<const util::XmlNode*> visited_;
  std::unordered_map<std::string, const util::XmlNode*> first_;
  std::set<std::pair<std::string, std::string>> keys_;
};

}  // namespace orvane::nimbrel::config::detail
