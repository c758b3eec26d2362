#include "check/Occurrences.h"

namespace orvane::nimbrel::check {

using util::XmlNode;

const XmlNode* Occurrences::inLanguage(const std::string& name, std::string_view language) const {
  const auto named = names_.find(name);
  if (named == names_.end()) {
    return nullptr;
  }
  const auto found = named->second.byLanguage.find(language);
  return found == named->second.byLanguage.end() ? nullptr : found->second;
}

const XmlNode* Occurrences::before(const std::string& name, std::string_view language) const {
  const auto found = names_.find(name);
  if (found == names_.end()) {
    return nullptr;
  }
  const Named& named = found->second;
  if (!anyUser_) {
    return named.any;
  }
  if (const XmlNode* const same = inLanguage(name, language)) {
    return same;
  }
  if (language.empty()) {
    return named.inSomeLanguage;
  }
  return language == defaultLanguage_ ? named.inAnotherThanDefault : nullptr;
}

const XmlNode* Occurrences::alwaysBefore(const std::string& name, std::string_view language) const {
  const XmlNode* const same = inLanguage(name, language);
  return same == nullptr && language.empty() && !defaultLanguage_.empty()
             ? inLanguage(name, defaultLanguage_)
             : same;
}

void Occurrences::add(const std::string& name, std::string_view language, const XmlNode& element,
                      Keep keep) {
  const auto remember = [&](const XmlNode*& place) {
    place = place == nullptr || keep == Keep::LAST ? &element : place;
  };
  Named& named = names_[name];
  remember(named.any);
  remember(named.byLanguage[language]);
  if (!language.empty()) {
    remember(named.inSomeLanguage);
    if (language != defaultLanguage_) {
      remember(named.inAnotherThanDefault);
    }
  }
}

}  // namespace orvane::nimbrel::check
