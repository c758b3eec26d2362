#pragma once

#include <string>
#include <string_view>

#include "config/Namespaces.h"
#include "config/NimbrelConfigParser.h"
#include "config/Report.h"
#include "config/RuleReaders.h"
#include "config/Suggestion.h"
#include "config/Vocabulary.h"
#include "config/Words.h"
#include "util/Log.h"

// What the handlers of the extension elements share: a flat list of children, each with two plain
// attributes, visited in document order up to the first malformed one.
namespace orvane::nimbrel::config::detail {

/// What an element asks of a child, and what it says of one that does not comply. The texts are
/// uneven on purpose: hosts know them as they are.
struct ChildRule {
  const char* element;           // local name, in the extension namespace
  const char* wrongElement;      // error text for any other element
  const char* key;               // the attribute that names the setting
  const char* missingAttribute;  // error text
  bool valueRequired = true;     // whether "value" must be there, too
  const char* other = nullptr;   // another element that may stand there
};

/// What a child says.
struct Setting {
  const util::XmlNode& element;
  util::Option<std::string> key;    // always held
  util::Option<std::string> value;  // held if the rule requires it

  [[nodiscard]] const std::string& keyText() const { return key.get(); }
  [[nodiscard]] const std::string& valueText() const { return value.get(); }
};

/// The children of one extension element, for one handler.
class ExtensionFrame {
 public:
  /// `observation` may be null.
  ExtensionFrame(NimbrelConfigParser& parser, const ConfigRules& rules,
                 Observation* observation) noexcept
      : parser_(parser), rules_(rules), observation_(observation) {}

  /// Whether a child is an extension element of this name.
  [[nodiscard]] bool is(const util::XmlNode& child, const char* name) const {
    return rules_.xmlNodeHasName(child, EXTENSION_NAMESPACE, name);
  }

  /// Calls `visit(child, lost)` for each element child until it returns false. True when none did.
  template <typename Visit>
  [[nodiscard]] bool forEachChild(const util::XmlNode& element, Visit visit) const {
    for (const util::XmlNode* child = element.firstElementChild(); child != nullptr;
         child = child->nextElementSibling()) {
      if (!visit(*child, Report(observation_, child))) {
        if (observation_ != nullptr) {
          reportNotReached(child->nextElementSibling());
        }
        return false;
      }
    }
    return true;
  }

  /// Calls `act(setting, lost)` for each child that complies with the rule; at the first that does
  /// not, sets the error and returns false. True otherwise.
  template <typename Act>
  [[nodiscard]] bool forEachSetting(const util::XmlNode& element, const ChildRule& rule,
                                    Act act) const {
    return forEachChild(element, [&](const util::XmlNode& child, const Report& lost) {
      return is(child, rule.element) ? withSetting(child, rule, lost, act)
                                     : stopAtElement(child, rule, lost);
    });
  }

  /// Calls `act(setting, lost)` if the child has the attributes that the rule asks for; else sets
  /// the error and returns false.
  template <typename Act>
  [[nodiscard]] bool withSetting(const util::XmlNode& child, const ChildRule& rule,
                                 const Report& lost, Act act) const {
    examine(child);
    const Setting setting{child, rules_.getSingleAttributeValue(child, nullptr, rule.key),
                          rules_.getSingleAttributeValue(child, nullptr, "value")};
    if (!setting.key || (rule.valueRequired && !setting.value)) {
      return stopAtAttribute(rule.missingAttribute, setting.key ? "value" : rule.key, lost);
    }
    act(setting, lost);
    return true;
  }

  /// Tells of attributes of a child that nobody reads.
  void examine(const util::XmlNode& child) const {
    if (observation_ != nullptr) {
      examineAttributes(child, *observation_);
    }
  }

  /// A child of another name: sets the error; false, for the caller to return.
  [[nodiscard]] bool stopAtElement(const util::XmlNode& child, const ChildRule& rule,
                                   const Report& lost) const;
  /// A child without an attribute that it needs: sets the error; false, for the caller to return.
  [[nodiscard]] bool stopAtAttribute(const char* error, std::string_view attribute,
                                     const Report& lost) const;

 private:
  void reportNotReached(const util::XmlNode* child) const;

  NimbrelConfigParser& parser_;
  const ConfigRules& rules_;
  Observation* observation_;
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
using Effect = void (*)(Record& record, const std::string& value, const Report& lost);

template <typename Record, auto Member>
void storeText(Record& record, const std::string& value, const Report& /*lost*/) {
  record.*Member = value;
}

template <typename Record, auto Member>
void appendText(Record& record, const std::string& value, const Report& /*lost*/) {
  (record.*Member).push_back(value);
}

/// Lets out what a bad number throws: it ends the parse.
template <typename Record, auto Member>
void storeNumber(Record& record, const std::string& value, const Report& lost) {
  record.*Member = readCounter(value, lost);
}

/// Assigned both ways: any other value than "true" clears the flag.
template <typename Record, auto Member>
void storeWhetherTrue(Record& record, const std::string& value, const Report& lost) {
  static constexpr Words WORDS = {{"true", "true"},
                                  {"false", "false"},
                                  "Only \"true\" switches it on; all else switches it off."};
  record.*Member = isOn(WORDS, value, lost);
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

/// The key of a table that an unknown one was meant to be; empty when that is not certain.
template <typename Row, std::size_t SIZE>
[[nodiscard]] std::string_view suggestedKey(const Row (&table)[SIZE],
                                            std::string_view key) noexcept {
  Suggestion suggestion(key);
  for (const Row& row : table) {
    suggestion.consider(row.key);
  }
  return suggestion.get();
}

/// No row of the table is for a key.
template <typename Row, std::size_t SIZE>
void reportUnknownKey(const Row (&table)[SIZE], std::string_view attribute, const std::string& key,
                      const Report& lost) {
  if (lost) {
    lost(LegacyCode::UNKNOWN_KEY, attribute, key, "Nothing is known by this name.",
         suggestedKey(table, key));
  }
}

}  // namespace orvane::nimbrel::config::detail
