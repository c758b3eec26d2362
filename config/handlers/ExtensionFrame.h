#pragma once

#include <string>
#include <string_view>

#include "config/RuleReaders.h"
#include "config/handlers/KnownElement.h"
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
  const HandlerContext& context;
  const util::XmlNode& element;
  const ChildDescription& description;
  util::Option<std::string> key;    // always held
  util::Option<std::string> value;  // held if the child needs a value
  Reporter report;                  // of the child

  [[nodiscard]] const AttributeDescription& keyAttribute() const {
    return description.attributes[0];
  }
  [[nodiscard]] const AttributeDescription& valueAttribute() const {
    return description.attributes[1];
  }
  [[nodiscard]] const std::string& keyText() const { return key.get(); }
  [[nodiscard]] const std::string& valueText() const { return value.get(); }
  /// Whether the value is a trigger word; one that is no word is reported.
  [[nodiscard]] bool isTriggered(const SwitchWords& words) const {
    return detail::isTriggered(words, valueText(), valueAttribute(), report);
  }
};

/// The children of an extension element, for its handler.
class ExtensionFrame {
 public:
  ExtensionFrame(const HandlerContext& context, const ErrorTexts& texts) noexcept
      : context_(context), texts_(texts) {}

  /// Calls `visit(child)` for each element child until it returns false. True when none did.
  template <typename Visit>
  [[nodiscard]] static bool forEachChild(const util::XmlNode& element, Visit visit) {
    for (const util::XmlNode* child = element.firstElementChild(); child != nullptr;
         child = child->nextElementSibling()) {
      if (!visit(*child)) {
        return false;
      }
    }
    return true;
  }

  /// Calls `act(setting)` for each child that is as described; at the first that is not, sets the
  /// error and returns false. True otherwise.
  template <typename Act>
  [[nodiscard]] bool forEachSetting(const util::XmlNode& element, const ChildDescription& expected,
                                    Act act) const {
    return forEachChild(element, [&](const util::XmlNode& child) {
      return is(child, expected) ? withSetting(child, expected, act) : stopAtElement(child);
    });
  }

  /// Whether a child is the one that is described.
  [[nodiscard]] static bool is(const util::XmlNode& child,
                               const ChildDescription& expected) noexcept {
    return child.nameView() == expected.name && child.namespaceView() == EXTENSION;
  }

  /// Calls `act(setting)` if the child has the attributes that it needs; else sets the error and
  /// returns false.
  template <typename Act>
  [[nodiscard]] bool withSetting(const util::XmlNode& child, const ChildDescription& expected,
                                 Act act) const {
    const Setting setting{context_,
                          child,
                          expected,
                          readAttribute(child, expected.attributes[0]),
                          readAttribute(child, expected.attributes[1]),
                          context_.reporterOf(child)};
    if (!setting.key) {
      return stopAtAttribute(child, texts_.missingAttribute, setting.keyAttribute());
    }
    if (!setting.value && setting.valueAttribute().isRequired) {
      return stopAtAttribute(child, texts_.missingAttribute, setting.valueAttribute());
    }
    act(setting);
    return true;
  }

  /// A child of another name: sets the error; false, for the caller to return.
  [[nodiscard]] bool stopAtElement(const util::XmlNode& child) const {
    context_.parser.setError(texts_.wrongElement);
    context_.reporterOf(child)(FindingCode::UNEXPECTED_CHILD);
    return false;
  }

  /// A child without an attribute that it needs: sets the error; false, for the caller to return.
  [[nodiscard]] bool stopAtAttribute(const util::XmlNode& child, const char* error,
                                     const AttributeDescription& attribute) const {
    context_.parser.setError(error);
    context_.reporterOf(child)(FindingCode::MISSING_ATTRIBUTE, attribute);
    return false;
  }

 private:
  const HandlerContext& context_;
  const ErrorTexts& texts_;
};

/// The debug line of elements whose settings have a "key".
inline void logKeyValue(const char* site, const Setting& setting) {
  NIMBREL_LOG_DEBUG(site, "key = %s, value = %s", setting.key.c_str(), setting.value.c_str());
}

/// The debug line of elements whose settings have a "name".
inline void logNameValue(const char* site, const Setting& setting) {
  NIMBREL_LOG_DEBUG(site, "name = %s, value = %s", setting.key.c_str(), setting.value.c_str());
}

// The attributes that most children have.
inline constexpr AttributeDescription KEY_AND_VALUE[] = {{"key", ValueKind::TEXT, true},
                                                         {"value", ValueKind::TEXT, true}};
inline constexpr AttributeDescription NAME_AND_VALUE[] = {{"name", ValueKind::TEXT, true},
                                                          {"value", ValueKind::TEXT, true}};

inline constexpr SwitchWords TRUE_WORD = {{"true", "true"}, {"false", "false"}};
inline constexpr SwitchWords YES_WORD = {{"yes", "yes"}, {"no", "no"}};
inline constexpr SwitchWords NO_WORD = {{"no", "no"}, {"yes", "yes"}};

}  // namespace orvane::nimbrel::config::detail
