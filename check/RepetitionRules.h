#pragma once

#include <string>
#include <string_view>

#include "check/Occurrences.h"
#include "check/Probe.h"
#include "check/Report.h"
#include "config/ElementDescription.h"

namespace orvane::nimbrel::check {

/// Finds what stands twice of which only one counts, by the descriptions of the elements. The probe
/// and the report have to live as long.
class RepetitionRules {
 public:
  /// For one user, whose walk is known.
  RepetitionRules(const Probe& probe, Report& report);
  /// For all users of a document with this default language, which may be empty.
  RepetitionRules(const Probe& probe, Report& report, std::string_view defaultLanguage);

  /// The next child of the root, in the order of the walk; see `Occurrences` for all users. Its
  /// children are read up to `stopped`, or all for null. The probe must have read it last. False
  /// when an earlier element is used instead.
  bool check(const util::XmlNode& element, const util::XmlNode* stopped);

  /// Whether an element of this name was checked.
  [[nodiscard]] bool knows(const util::XmlNode& element) const;

 private:
  /// These are false when an earlier element is used instead.
  bool checkFirstCounts(const Occurrences& known, const std::string& name,
                        const util::XmlNode& element, std::string_view attribute,
                        std::string_view language);
  bool checkUnique(const util::XmlNode& element, std::string_view attribute,
                   std::string_view language);
  void checkSettings(const util::XmlNode& element, const config::ElementDescription& description,
                     const util::XmlNode* stopped, std::string_view language);
  void checkSetting(const util::XmlNode& setting, const config::ElementDescription& parent,
                    std::string_view keyAttribute, std::string_view language);
  void addRepeated(const util::XmlNode& element, std::string_view attribute,
                   const util::XmlNode& other, FindingCode code = FindingCode::REPEATED);

  const Probe& probe_;
  Report& report_;
  bool anyUser_ = false;
  Occurrences elements_;
  Occurrences values_;    // of attributes that have to be unique
  Occurrences settings_;  // by key
};

}  // namespace orvane::nimbrel::check
