#pragma once

#include <string>

#include "config/handlers/Elements.h"
#include "util/Log.h"

// What the handlers of the extension elements share: a flat list of children, visited in document
// order up to the first malformed one.
namespace orvane::nimbrel::config::detail {

/// What an element says of a child that does not comply. The texts are uneven on purpose: hosts
/// know them as they are.
struct ErrorTexts {
  const char* wrongElement;
  const char* missingAttribute;
};

/// A child that names a setting, and what it says.
struct Setting {
  HandlerContext& context;
  const ChildDescription& description;
  ElementReader reader;
  util::Option<std::string> key;    // always held
  util::Option<std::string> value;  // held if the child needs a value

  [[nodiscard]] const std::string& keyText() const { return key.get(); }
  [[nodiscard]] const std::string& valueText() const { return value.get(); }
  void reportKey(FindingCode code) const { reader.report(code, description.attributes[0], key); }
  void reportValue(FindingCode code) const {
    reader.report(code, description.attributes[1], value);
  }

  /// Whether the value is a trigger word of a switch. A value that is none of its words is
  /// reported.
  [[nodiscard]] bool isTriggered(const SwitchWords& words) const;
  /// The value as a number. One that is none ends the parse: throws as
  /// `ConfigRules::parseNonNegativeInteger` does.
  [[nodiscard]] unsigned int number() const;
};

/// Whether a child is the one that is described.
[[nodiscard]] inline bool isA(const ChildDescription& expected,
                              const util::XmlNode& child) noexcept {
  return child.nameView() == expected.name && child.namespaceView() == extensionNamespace();
}

/// Sets the error for a child of another name; false, for the caller to return.
bool stopAtElement(HandlerContext& context, const util::XmlNode& child, const char* error);
/// Sets the error for a child without an attribute that it needs; false, for the caller to return.
bool stopAtAttribute(HandlerContext& context, const ElementReader& child,
                     const AttributeDescription& attribute, const char* error);

/// Calls `visit(child)` for each element child until it returns false. True when none did.
template <typename Visit>
[[nodiscard]] bool forEachChild(const util::XmlNode& element, const Visit& visit) {
  const util::XmlNode* child = element.firstElementChild();
  while (child != nullptr && visit(*child)) {
    child = child->nextElementSibling();
  }
  return child == nullptr;
}

/// Calls `act(setting)` if the child has the attributes that it needs; else sets the error and
/// returns false.
template <typename Act>
[[nodiscard]] bool withSetting(HandlerContext& context, const util::XmlNode& child,
                               const ChildDescription& expected, const ErrorTexts& texts,
                               const Act& act) {
  const AttributeDescription& key = expected.attributes[0];
  const AttributeDescription& value = expected.attributes[1];
  const ElementReader reader = context.readerOf(child);
  const Setting setting{context, expected, reader, reader.text(key), reader.text(value)};
  if (!setting.key || (!setting.value && value.isRequired)) {
    return stopAtAttribute(context, reader, setting.key ? value : key, texts.missingAttribute);
  }
  act(setting);
  return true;
}

/// Calls `act(setting)` for each child that is as described; at the first that is not, sets the
/// error and returns false. True otherwise.
template <typename Act>
[[nodiscard]] bool forEachSetting(HandlerContext& context, const util::XmlNode& element,
                                  const ChildDescription& expected, const ErrorTexts& texts,
                                  const Act& act) {
  return forEachChild(element, [&](const util::XmlNode& child) {
    return isA(expected, child) ? withSetting(context, child, expected, texts, act)
                                : stopAtElement(context, child, texts.wrongElement);
  });
}

/// The debug line of elements whose settings have a "key".
inline void logKeyValue(const char* site, const Setting& setting) {
  NIMBREL_LOG_DEBUG(site, "key = %s, value = %s", setting.key.c_str(), setting.value.c_str());
}

/// The debug line of elements whose settings have a "name".
inline void logNameValue(const char* site, const Setting& setting) {
  NIMBREL_LOG_DEBUG(site, "name = %s, value = %s", setting.key.c_str(), setting.value.c_str());
}

// The attributes that most children have.
inline constexpr AttributeDescription KEY_AND_VALUE[] = {neededAttribute("key", ValueKind::TEXT),
                                                         neededAttribute("value", ValueKind::TEXT)};
inline constexpr AttributeDescription NAME_AND_VALUE[] = {
    neededAttribute("name", ValueKind::TEXT), neededAttribute("value", ValueKind::TEXT)};

inline constexpr std::string_view ANY_NAME = {};  ///< of a row that stands for any key

inline constexpr SwitchWords TRUE_WORD = {{"true", "true"}, {"false", "false"}};
inline constexpr SwitchWords YES_WORD = {{"yes", "yes"}, {"no", "no"}};
inline constexpr SwitchWords NO_WORD = {{"no", "no"}, {"yes", "yes"}};

}  // namespace orvane::nimbrel::config::detail
