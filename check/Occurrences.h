#pragma once

#include <map>
#include <string>
#include <string_view>

#include "util/XmlNode.h"

namespace orvane::nimbrel::check {

/// Remembers things of which only one counts, in the order of a walk, and tells which of them can
/// meet in the walk of some user. Names are ordered, not hashed: a document chooses them.
class Occurrences {
 public:
  /// Of a user whose walk is known, in which all meet.
  Occurrences() = default;
  /// Of any user. Those with a language of their own have to be added first, then those in
  /// `defaultLanguage`, then those without one.
  explicit Occurrences(std::string_view defaultLanguage)
      : anyUser_(true), defaultLanguage_(defaultLanguage) {}

  /// The one of this name and language; null when there is none.
  [[nodiscard]] const util::XmlNode* inLanguage(const std::string& name,
                                                std::string_view language) const;
  /// One of this name that some user gets before the next one in this language; null when there is
  /// none.
  [[nodiscard]] const util::XmlNode* before(const std::string& name,
                                            std::string_view language) const;
  /// The one that each user who gets the next one in this language gets before it; null when there
  /// is none. Of one user the language alone tells.
  [[nodiscard]] const util::XmlNode* alwaysBefore(const std::string& name,
                                                  std::string_view language) const;
  /// Which of several is remembered.
  enum class Keep { FIRST, LAST };
  void add(const std::string& name, std::string_view language, const util::XmlNode& element,
           Keep keep = Keep::FIRST);

 private:
  struct Named {
    const util::XmlNode* any = nullptr;
    const util::XmlNode* inSomeLanguage = nullptr;
    const util::XmlNode* inAnotherThanDefault = nullptr;
    std::map<std::string_view, const util::XmlNode*> byLanguage;
  };

  bool anyUser_ = false;
  std::string_view defaultLanguage_;
  std::map<std::string, Named, std::less<>> names_;
};

}  // namespace orvane::nimbrel::check
