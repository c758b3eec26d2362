#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "check/Report.h"
#include "config/ElementDescription.h"

namespace orvane::nimbrel::check {

/// Finds what stands twice of which only one counts, by the descriptions of the elements, and tells
/// what can meet in the walk of some user. What the report has from the parser is not said again;
/// it has to live as long.
class RepetitionRules {
 public:
  /// For all users of a document with this default language, which may be empty; for none for one
  /// user, whose walk is known.
  RepetitionRules(Report& report, std::optional<std::string_view> defaultLanguage)
      : report_(report), defaultLanguage_(defaultLanguage) {}

  /// Checks the next child of the root, whose own children are read up to `stopped`, or all for
  /// null. The order is that of the walk; for all users it is: children with a language that is not
  /// the default one, children in the default language, children without one. False when an earlier
  /// element is used instead.
  bool check(const util::XmlNode& element, const util::XmlNode* stopped);

  /// Whether an element of this name was checked.
  [[nodiscard]] bool knows(const util::XmlNode& element) const;

 private:
  using Name = const std::string&;
  using Language = std::string_view;

  /// These are false when an earlier element is used instead.
  bool checkFirstCounts(Name name, const util::XmlNode& element, std::string_view attribute,
                        Language language);
  bool checkUnique(const util::XmlNode& element, std::string_view attribute, Language language);
  void checkLastCounts(const util::XmlNode& element, Language language, bool hasEffect);
  /// Whether it moves something away from its default.
  bool checkSetting(const util::XmlNode& setting, const config::ElementDescription& parent,
                    std::string_view keyAttribute, Language language);
  void addRepeated(const util::XmlNode& element, std::string_view attribute,
                   const util::XmlNode& other, FindingCode code = FindingCode::REPEATED);

  /// What was remembered by this name and language; null for none.
  [[nodiscard]] const util::XmlNode* inLanguage(Name name, Language language) const;
  /// What some user gets before the next one in this language; null for none.
  [[nodiscard]] const util::XmlNode* before(Name name, Language language) const;
  /// What every user who gets the next one in this language gets before it; null for none.
  /// For one user that is what has the same language.
  [[nodiscard]] const util::XmlNode* alwaysBefore(Name name, Language language) const;
  /// Which of several is remembered.
  enum class Keep { FIRST, LAST };
  void remember(Name name, Language language, const util::XmlNode& element, Keep keep);

  Report& report_;
  std::optional<std::string_view> defaultLanguage_;
  // By the name of an element, or with "=" and a key, or with "#" and a value that has to be
  // unique; then by the language, or the group of languages. Ordered, not hashed: a document
  // chooses them.
  std::map<std::string, std::map<std::string_view, const util::XmlNode*>> known_;
};

}  // namespace orvane::nimbrel::check
