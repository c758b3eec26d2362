#include "check/RepetitionRules.h"

#include "check/Vocabulary.h"
#include "config/Namespaces.h"
#include "util/HostSymbols.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::check {

using config::ChildDescription;
using config::ElementDescription;
using config::KeyDescription;
using config::KeyRule;
using config::Repetition;
using util::XmlNode;
using zel::util::StringUtil;

namespace {

// Groups of languages, which no language is named like.
constexpr std::string_view ANY = "*any";
constexpr std::string_view SOME = "*some";                // all but none
constexpr std::string_view NOT_DEFAULT = "*not default";  // these but the default one

/// Whether the first value of a key counts: where each density may have one and the device tells
/// its own, the key for all others counts only while nothing is stored.
bool firstCounts(const KeyDescription& description, std::string_view key) {
  int status = 0;
  return description.hasDensityVariants && key == description.name &&
         (static_cast<void>(corvel_get_int("screen", "dpi", &status, 0)), status == 0);
}

}  // namespace

const XmlNode* RepetitionRules::inLanguage(Name name, Language language) const {
  const auto named = known_.find(name);
  if (named == known_.end()) {
    return nullptr;
  }
  const auto found = named->second.find(language);
  return found == named->second.end() ? nullptr : found->second;
}

const XmlNode* RepetitionRules::before(Name name, Language language) const {
  if (!defaultLanguage_) {
    return inLanguage(name, ANY);
  }
  if (const XmlNode* const same = inLanguage(name, language)) {
    return same;
  }
  if (language.empty()) {
    return inLanguage(name, SOME);
  }
  return language == defaultLanguage_ ? inLanguage(name, NOT_DEFAULT) : nullptr;
}

const XmlNode* RepetitionRules::alwaysBefore(Name name, Language language) const {
  const XmlNode* const same = inLanguage(name, language);
  const std::string_view fallback = defaultLanguage_.value_or(Language());
  return same == nullptr && language.empty() && !fallback.empty() ? inLanguage(name, fallback)
                                                                  : same;
}

void RepetitionRules::remember(Name name, Language language, const XmlNode& element, Keep keep) {
  auto& named = known_[name];
  for (const std::string_view group :
       {language, ANY, language.empty() ? language : SOME,
        language.empty() || language == defaultLanguage_ ? language : NOT_DEFAULT}) {
    const auto [place, isNew] = named.emplace(group, &element);
    place->second = isNew || keep == Keep::LAST ? &element : place->second;
  }
}

void RepetitionRules::addRepeated(const XmlNode& element, std::string_view attribute,
                                  const XmlNode& other, FindingCode code) {
  Diagnostic& finding = attribute.empty() ? report_.add(code, &element)
                                          : report_.add(code, element, indexOf(element, attribute));
  finding.other = &other;
}

bool RepetitionRules::knows(const XmlNode& element) const {
  return known_.count(displayName(element)) != 0;
}

bool RepetitionRules::check(const XmlNode& element, const XmlNode* stopped) {
  const std::string_view language = element.attributeView("lang", config::XML_NAMESPACE);
  const std::string name = displayName(element);
  const ElementDescription* const description = describe(element);
  bool isUsed = true;
  if (description != nullptr) {
    if (description->repetition == Repetition::FIRST_COUNTS) {
      isUsed = checkFirstCounts(name, element, {}, language);
    } else if (description->repetition == Repetition::UNIQUE_BY) {
      isUsed = checkUnique(element, description->uniqueAttribute, language);
    }
    bool hasEffect = false;
    for (const XmlNode* child = description->isExtension ? element.firstElementChild() : nullptr;
         child != nullptr && child != stopped; child = child->nextElementSibling()) {
      const ChildDescription* const known = describeChild(*description, *child);
      if (known != nullptr && !known->keyAttribute.empty()) {
        hasEffect |= checkSetting(*child, *description, known->keyAttribute, language);
      } else if (known != nullptr) {
        checkLastCounts(*child, language, true);
      }
    }
    if (description->repetition == Repetition::RESTARTS) {
      checkLastCounts(element, language, hasEffect);  // else it takes nothing from the next one
    }
  }
  remember(name, language, element, Keep::FIRST);
  return isUsed;
}

bool RepetitionRules::checkFirstCounts(Name name, const XmlNode& element,
                                       std::string_view attribute, Language language) {
  if (const XmlNode* const same = inLanguage(name, language)) {
    addRepeated(element, attribute, *same);
    return false;
  }
  // Users of other languages get this one, so for all users together it must be useless to each.
  const XmlNode* const better =
      defaultLanguage_ ? alwaysBefore(name, language) : before(name, language);
  if (better != nullptr) {
    addRepeated(element, attribute, *better, FindingCode::OTHER_LANGUAGE);
  }
  return true;
}

bool RepetitionRules::checkUnique(const XmlNode& element, std::string_view attribute,
                                  Language language) {
  const std::string value = StringUtil::squeezeAndTrim(element.attributeView(attribute));
  if (value.empty()) {
    return true;
  }
  const std::string name = displayName(element) + '#' + value;
  const bool isUsed = checkFirstCounts(name, element, attribute, language);
  remember(name, language, element, Keep::FIRST);
  return isUsed;
}

void RepetitionRules::checkLastCounts(const XmlNode& element, Language language, bool hasEffect) {
  const std::string name = displayName(element) + '=';
  if (const XmlNode* const earlier = before(name, language)) {
    addRepeated(element, {}, *earlier);
  }
  if (hasEffect) {
    remember(name, language, element, Keep::LAST);
  }
}

bool RepetitionRules::checkSetting(const XmlNode& setting, const ElementDescription& parent,
                                   std::string_view keyAttribute, std::string_view language) {
  const std::string key = StringUtil::squeezeAndTrim(setting.attributeView(keyAttribute));
  const KeyDescription* const description = describeKey(parent, key);
  if (description == nullptr) {
    return false;
  }
  const std::string_view value = StringUtil::trimmed(setting.attributeView("value"));
  const config::SwitchWords* const words = description->words;
  const bool hasEffect = words == nullptr || isAmong(words->trigger, value);
  if (description->rule == KeyRule::ACCUMULATES) {
    return hasEffect;
  }
  std::string name = displayName(*setting.parent());
  if (parent.repetition == Repetition::RESTARTS) {
    // An earlier element does not count anyway.
    name += std::to_string(reinterpret_cast<std::uintptr_t>(setting.parent()));
  }
  name += '=' + key;
  if (description->rule == KeyRule::ONLY_RAISED) {
    // Only what contradicts is reported; of an unknown word something is reported already.
    if (!hasEffect && !isAmong(words->opposite, value)) {
      return false;
    }
    // What raises it takes the effect from what does not, also from that in another language.
    const XmlNode* const earlier =
        hasEffect ? before(name + '-', language) : alwaysBefore(name + '+', language);
    if (earlier != nullptr) {
      addRepeated(setting, keyAttribute, *earlier);
    }
    name += hasEffect ? "+" : "-";
  } else if (const XmlNode* const earlier = before(name, language)) {
    if (!firstCounts(*description, key)) {
      addRepeated(setting, keyAttribute, *earlier);
    } else if (!report_.hasReported(setting, keyAttribute)) {
      addRepeated(setting, keyAttribute, *earlier, FindingCode::UNUSED_SETTING);
    }
  }
  remember(name, language, setting, Keep::LAST);
  return hasEffect;
}

}  // namespace orvane::nimbrel::check
