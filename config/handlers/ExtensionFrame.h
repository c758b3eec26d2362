#pragma once

#include <string>

#include "config/Namespaces.h"
#include "config/NimbrelConfigParser.h"
#include "util/Log.h"

// What the handlers of the extension elements share: a flat list of children, each with two plain
// attributes, visited in document order up to the first malformed one.
namespace orvane::nimbrel::config::internal {

/// What an element asks of a child, and what it says of one that does not comply. The texts are
/// uneven on purpose: hosts know them as they are.
struct ChildRule {
  const char* element;           // local name, in the extension namespace
  const char* wrongElement;      // error text for any other element
  const char* key;               // the attribute that names the setting
  const char* missingAttribute;  // error text
  bool valueRequired = true;     // whether "value" must be there, too
};

/// What a child says.
struct Setting {
  util::Option<std::string> key;    // always held
  util::Option<std::string> value;  // held if the rule requires it

  [[nodiscard]] const std::string& keyText() const { return key.get(); }
  [[nodiscard]] const std::string& valueText() const { return value.get(); }
};

/// The children of one extension element, for one handler.
class ExtensionFrame {
 public:
  ExtensionFrame(NimbrelConfigParser& parser, const ConfigRules& rules) noexcept
      : parser_(parser), rules_(rules) {}

  /// Whether a child is an extension element of this name.
  [[nodiscard]] bool is(const util::XmlNode& child, const char* name) const {
    return rules_.xmlNodeHasName(child, EXTENSION_NAMESPACE, name);
  }

  /// Calls `visit(child)` for each element child until it returns false. True when none did.
  template <typename Visit>
  [[nodiscard]] bool forEachChild(const util::XmlNode& element, Visit visit) const {
    for (const util::XmlNode* child = element.firstElementChild(); child != nullptr;
         child = child->nextElementSibling()) {
      if (!visit(*child)) {
        return false;
      }
    }
    return true;
  }

  /// Calls `act(setting, child)` for each child that complies with the rule; at the first that does
  /// not, sets the error and returns false. True otherwise.
  template <typename Act>
  [[nodiscard]] bool forEachSetting(const util::XmlNode& element, const ChildRule& rule,
                                    Act act) const {
    return forEachChild(element, [&](const util::XmlNode& child) {
      return is(child, rule.element) ? withSetting(child, rule, act) : stop(rule.wrongElement);
    });
  }

  /// Calls `act(setting, child)` if the child has the attributes that the rule asks for; else sets
  /// the error and returns false.
  template <typename Act>
  [[nodiscard]] bool withSetting(const util::XmlNode& child, const ChildRule& rule, Act act) const {
    const Setting setting{rules_.getSingleAttributeValue(child, nullptr, rule.key),
                          rules_.getSingleAttributeValue(child, nullptr, "value")};
    if (!setting.key || (rule.valueRequired && !setting.value)) {
      return stop(rule.missingAttribute);
    }
    act(setting, child);
    return true;
  }

  /// Sets the error; false, for the caller to return.
  [[nodiscard]] bool stop(const char* message) const {
    parser_.setError(message);
    return false;
  }

 private:
  NimbrelConfigParser& parser_;
  const ConfigRules& rules_;
};

/// The debug line of elements whose settings have a "key".
inline void logKeyValue(const char* site, const Setting& setting) {
  NIMBREL_LOG_DEBUG(site, "key = %s, value = %s", setting.key.c_str(), setting.value.c_str());
}

/// The debug line of elements whose settings have a "name".
inline void logNameValue(const char* site, const Setting& setting) {
  NIMBREL_LOG_DEBUG(site, "name = %s, value = %s", setting.key.c_str(), setting.value.c_str());
}

/// @name Effects of a value on one member of a settings record
/// They are the entries of the handlers' key tables.
/// @{
template <typename Record>
using Effect = void (*)(Record& record, const std::string& value, const ConfigRules& rules);

template <typename Record, auto Member>
void storeText(Record& record, const std::string& value, const ConfigRules& /*rules*/) {
  record.*Member = value;
}

template <typename Record, auto Member>
void appendText(Record& record, const std::string& value, const ConfigRules& /*rules*/) {
  (record.*Member).push_back(value);
}

/// Lets out what a bad number throws: it ends the parse.
template <typename Record, auto Member>
void storeNumber(Record& record, const std::string& value, const ConfigRules& rules) {
  record.*Member = rules.parseNonNegativeInteger(value.c_str());
}

/// Assigned both ways: any other value than "true" clears the flag.
template <typename Record, auto Member>
void storeWhetherTrue(Record& record, const std::string& value, const ConfigRules& /*rules*/) {
  record.*Member = value == "true";
}
/// @}

/// The row of a table whose `key` equals the text, or null. Keys are distinct.
template <typename Row, std::size_t SIZE>
[[nodiscard]] const Row* findRow(const Row (&table)[SIZE], std::string_view key) noexcept {
  for (const Row& row : table) {
    if (row.key == key) {
      return &row;
    }
  }
  return nullptr;
}

}  // namespace orvane::nimbrel::config::internal
