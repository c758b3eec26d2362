#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "check/Report.h"
#include "config/ElementDescription.h"

namespace orvane::nimbrel::check {

/// What can be said of one element by its description alone, without a decision of the parser.
class TreeRules {
 public:
  /// The report, into which findings go, has to live as long. What it has from the parser of an
  /// attribute is not said again.
  TreeRules(bool isPackaged, Report& report) : isPackaged_(isPackaged), report_(report) {}

  /// The attributes of the root and the text in it.
  void checkRoot(const util::XmlNode& root) {
    checkElement(root, config::widgetDescription().attributes);
  }
  /// A child of the root and all below it, as far as it is read: up to `stopped`, or to its end for
  /// null.
  void checkChild(const util::XmlNode& element, const util::XmlNode* stopped);

 private:
  using Attributes = config::DescriptionList<config::AttributeDescription>;

  /// An element in which no text counts, without its children.
  void checkElement(const util::XmlNode& element, Attributes known);
  /// The attributes of an element; none is known of those within a text.
  void checkAttributes(const util::XmlNode& element, std::optional<Attributes> known);
  void checkAttribute(const util::XmlNode& element, std::uint32_t index, Attributes known);
  void checkNumber(const util::XmlNode& element, std::uint32_t index, config::ValueKind kind,
                   bool onlyIfUsable = false);
  void checkValue(const util::XmlNode& element, std::uint32_t index, config::ValueKind kind);
  void checkUnknown(const util::XmlNode& element);
  void checkText(const util::XmlNode& element);
  void checkChildren(const util::XmlNode& element, const config::ElementDescription& description,
                     const util::XmlNode* stopped);
  void checkSetting(const util::XmlNode& setting, const config::ElementDescription& parent,
                    std::string_view keyAttribute);

  bool isPackaged_;
  Report& report_;
};

}  // namespace orvane::nimbrel::check
