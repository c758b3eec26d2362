#pragma once

#include <set>
#include <string>
#include <string_view>

#include "check/Occurrences.h"
#include "check/Report.h"
#include "config/ElementDescription.h"

namespace orvane::nimbrel::check {

/// Finds what stands twice of which only one counts, by the descriptions of the elements.
class RepetitionRules {
 public:
  /// For one user, whose walk is known.
  explicit RepetitionRules(Report& report);
  /// For all users of a document with this default language, which may be empty.
  RepetitionRules(Report& report, std::string_view defaultLanguage);

  /// The next child of the root, in the order of the walk; see `Occurrences` for all users. Its
  /// children are read up to `stopped`, or all for null. What the parser reported must be in the
  /// report already.
  void check(const util::XmlNode& element, const util::XmlNode* stopped);

  /// Whether an element of this name was checked.
  [[nodiscard]] bool knows(const util::XmlNode& element) const;

 private:
  void checkFirstCounts(const util::XmlNode& element, std::string_view language);
  void checkUnique(const util::XmlNode& element, std::string_view attribute,
                   std::string_view language);
  void checkSettings(const util::XmlNode& element, const config::ElementDescription& description,
                     const util::XmlNode* stopped, std::string_view language);
  void checkSetting(const util::XmlNode& setting, const config::ElementDescription& parent,
                    std::string_view keyAttribute, std::string_view language);
  void addRepeated(const util::XmlNode& element, std::string_view attribute,
                   const util::XmlNode& other, FindingCode code = FindingCode::REPEATED);

  Report& report_;
  bool anyUser_ = false;
  std::string_view defaultLanguage_;
  Occurrences elements_;
  Occurrences values_;                     // of attributes that have to be unique
  Occurrences settings_;                   // by key
  std::set<const util::XmlNode*> unused_;  // settings that the parser found to have no effect
  std::size_t seen_ = 0;                   // findings that were looked at for that
};

}  // namespace orvane::nimbrel::check
