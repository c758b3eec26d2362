#pragma once

#include <cstddef>
#include <set>
#include <string_view>
#include <utility>

#include "check/Report.h"
#include "config/ElementDescription.h"

namespace orvane::nimbrel::check {

/// What can be said of one element by its description alone, without a decision of the parser.
class TreeRules {
 public:
  /// Findings go into the report, which has to live as long.
  explicit TreeRules(Report& report) : report_(report) {}

  /// The attributes of the root.
  void checkRoot(const util::XmlNode& root);
  /// A child of the root and all below it, as far as it is read: up to `stopped`, or to its end for
  /// null. What the parser reported of it must be in the report already, and is not said again.
  void checkChild(const util::XmlNode& element, const util::XmlNode* stopped);

 private:
  using Attributes = config::DescriptionList<config::AttributeDescription>;

  void noteReported();
  [[nodiscard]] bool isReported(const util::XmlNode& element, std::string_view attribute) const;
  void checkAttributes(const util::XmlNode& element, Attributes known);
  void checkNumber(const util::XmlNode& element, std::size_t index, config::ValueKind kind,
                   bool onlyIfUsable = false);
  void checkLanguage(const util::XmlNode& element);
  void checkValue(const util::XmlNode& element, std::size_t index, config::ValueKind kind);
  void checkStrayText(const util::XmlNode& element);
  void checkOrigin(const util::XmlNode& access, Attributes known);
  void checkUnknown(const util::XmlNode& element);
  void checkText(const util::XmlNode& element);
  void checkTextAttributes(const util::XmlNode& element);
  /// A child of a child of the root, in which no element is read.
  void checkLeaf(const util::XmlNode& element, Attributes known);
  void checkChildren(const util::XmlNode& element, const config::ElementDescription& description);
  void checkSettings(const util::XmlNode& element, const config::ElementDescription& description,
                     const util::XmlNode* stopped);
  void checkSetting(const util::XmlNode& setting, const config::ElementDescription& parent,
                    std::string_view keyAttribute);
  void add(FindingCode code, const util::XmlNode& element, const util::XmlNode* other = nullptr);
  void addNamespace(FindingCode code, const util::XmlNode& element);
  void addAttribute(FindingCode code, const util::XmlNode& element, std::size_t index);

  Report& report_;
  std::size_t seen_ = 0;  // findings of the report of which we know
  /// What the parser reported of the element at hand.
  std::set<std::pair<const util::XmlNode*, std::string_view>> reported_;
};

}  // namespace orvane::nimbrel::check
