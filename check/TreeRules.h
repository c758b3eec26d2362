#pragma once

#include <cstdint>
#include <string_view>

#include "check/Probe.h"
#include "check/Report.h"
#include "config/ElementDescription.h"

namespace orvane::nimbrel::check {

/// What can be said of one element by its description alone, without a decision of the parser.
class TreeRules {
 public:
  /// The probe, and the report into which findings go, have to live as long.
  TreeRules(const Probe& probe, bool isPackaged, Report& report)
      : probe_(probe), isPackaged_(isPackaged), report_(report) {}

  /// The attributes of the root, which the probe must have read. What the parser reported of an
  /// attribute is not said again.
  void checkRoot(const util::XmlNode& root);
  /// A child of the root and all below it, as far as it is read: up to `stopped`, or to its end for
  /// null. The probe must have read it last.
  void checkChild(const util::XmlNode& element, const util::XmlNode* stopped);

 private:
  using Attributes = config::DescriptionList<config::AttributeDescription>;

  void checkAttributes(const util::XmlNode& element, Attributes known);
  void checkNumber(const util::XmlNode& element, std::uint32_t index, config::ValueKind kind,
                   bool onlyIfUsable = false);
  void checkLanguage(const util::XmlNode& element);
  void checkValue(const util::XmlNode& element, std::uint32_t index, config::ValueKind kind);
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
  void addNamespace(FindingCode code, const util::XmlNode& element);
  void addAttribute(FindingCode code, const util::XmlNode& element, std::uint32_t index);

  const Probe& probe_;
  bool isPackaged_;
  Report& report_;
};

}  // namespace orvane::nimbrel::check
