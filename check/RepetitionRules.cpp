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

/// Whether a setting moves something away from its default.
bool hasEffect(const XmlNode& setting, const ElementDescription& parent) {
  const ChildDescription* const child = describeChild(parent, setting);
  if (child == nullptr || child->keyAttribute.empty()) {
    return false;
  }
  const KeyDescription* const key =
      describeKey(parent, StringUtil::squeezeAndTrim(setting.attributeView(child->keyAttribute)));
  return key != nullptr &&
         (key->words == nullptr ||
          isAmong(key->words->trigger, StringUtil::trimmed(setting.attributeView("value"))));
}

bool hasEffect(const XmlNode& element, const ElementDescription& description,
               const XmlNode* stopped) {
  for (const XmlNode* child = element.firstElementChild(); child != stopped && child != nullptr;
       child = child->nextElementSibling()) {
    if (hasEffect(*child, description)) {
      return true;
    }
  }
  return false;
}

/// Whether the first value of a key counts: where each density may have one and the device tells
/// its own, the key for all others counts only while nothing is stored.
bool firstCounts(const KeyDescription& description, std::string_view key) {
  int status = 0;
  return description.hasDensityVariants && key == description.name &&
         (static_cast<void>(corvel_get_int("screen", "dpi", &status, 0)), status == 0);
}

}  // namespace

RepetitionRules::RepetitionRules(const Probe& probe, Report& report)
    : probe_(probe), report_(report) {}

RepetitionRules::RepetitionRules(const Probe& probe, Report& report,
                                 std::string_view defaultLanguage)
    : probe_(probe),
      report_(report),
      anyUser_(true),
      elements_(defaultLanguage),
      values_(defaultLanguage),
      settings_(defaultLanguage) {}

void RepetitionRules::addRepeated(const XmlNode& element, std::string_view attribute,
                                  const XmlNode& other, FindingCode code) {
  Diagnostic& finding = attribute.empty() ? report_.add(code, &element)
                                          : report_.add(code, element, indexOf(element, attribute));
  finding.other = &other;
}

bool RepetitionRules::knows(const XmlNode& element) const {
  return elements_.before(displayName(element), {}) != nullptr;
}

bool RepetitionRules::check(const XmlNode& element, const XmlNode* stopped) {
  const std::string_view language = element.attributeView("lang", config::XML_NAMESPACE);
  const std::string name = displayName(element);
  const ElementDescription* const description = describe(element);
  bool isUsed = true;
  if (description != nullptr) {
    switch (description->repetition) {
      case Repetition::FIRST_COUNTS:
        isUsed = checkFirstCounts(elements_, name, element, {}, language);
        break;
      case Repetition::UNIQUE_BY:
        isUsed = checkUnique(element, description->uniqueAttribute, language);
        break;
      case Repetition::RESTARTS:
        if (const XmlNode* const earlier = settings_.before(name, language)) {
          addRepeated(element, {}, *earlier);
        }
        if (hasEffect(element, *description, stopped)) {  // else the next one takes nothing away
          settings_.add(name, language, element, Occurrences::Keep::LAST);
        }
        break;
      case Repetition::ADDS:
        break;
    }
    checkSettings(element, *description, stopped, language);
  }
  elements_.add(name, language, element);
  return isUsed;
}

bool RepetitionRules::checkFirstCounts(const Occurrences& known, const std::string& name,
                                       const XmlNode& element, std::string_view attribute,
                                       std::string_view language) {
  if (const XmlNode* const same = known.inLanguage(name, language)) {
    addRepeated(element, attribute, *same);
    return false;
  }
  // Users of other languages get this one, so for all users together it must be useless to each.
  const XmlNode* const better =
      anyUser_ ? known.alwaysBefore(name, language) : known.before(name, language);
  if (better != nullptr) {
    addRepeated(element, attribute, *better, FindingCode::OTHER_LANGUAGE);
  }
  return true;
}

bool RepetitionRules::checkUnique(const XmlNode& element, std::string_view attribute,
                                  std::string_view language) {
  const std::string value = StringUtil::squeezeAndTrim(element.attributeView(attribute));
  if (value.empty()) {
    return true;
  }
  const std::string name = displayName(element) + '=' + value;
  const bool isUsed = checkFirstCounts(values_, name, element, attribute, language);
  values_.add(name, language, element);
  return isUsed;
}

void RepetitionRules::checkSettings(const XmlNode& element, const ElementDescription& description,
                                    const XmlNode* stopped, std::string_view language) {
  if (!description.isExtension) {
    return;
  }
  for (const XmlNode* child = element.firstElementChild(); child != nullptr && child != stopped;
       child = child->nextElementSibling()) {
    const ChildDescription* const known = describeChild(description, *child);
    if (known == nullptr) {
      continue;
    }
    if (!known->keyAttribute.empty()) {
      checkSetting(*child, description, known->keyAttribute, language);
      continue;
    }
    const std::string name = displayName(*child);
    if (const XmlNode* const earlier = settings_.before(name, language)) {
      addRepeated(*child, {}, *earlier);
    }
    settings_.add(name, language, *child, Occurrences::Keep::LAST);
  }
}

void RepetitionRules::checkSetting(const XmlNode& setting, const ElementDescription& parent,
                                   std::string_view keyAttribute, std::string_view language) {
  const std::string key = StringUtil::squeezeAndTrim(setting.attributeView(keyAttribute));
  const KeyDescription* const description = describeKey(parent, key);
  if (description == nullptr || description->rule == KeyRule::ACCUMULATES) {
    return;
  }
  std::string name = displayName(*setting.parent());
  if (parent.repetition == Repetition::RESTARTS) {
    // An earlier element does not count anyway.
    name += std::to_string(reinterpret_cast<std::uintptr_t>(setting.parent()));
  }
  name += '=' + key;
  if (description->rule == KeyRule::ONLY_RAISED) {
    // Only what contradicts is reported; of an unknown word something is reported already.
    const std::string_view value = StringUtil::trimmed(setting.attributeView("value"));
    const bool raises = isAmong(description->words->trigger, value);
    if (!raises && !isAmong(description->words->opposite, value)) {
      return;
    }
    // What raises it takes the effect from what does not, also from that in another language.
    const XmlNode* const earlier = raises ? settings_.before(name + '-', language)
                                          : settings_.alwaysBefore(name + '+', language);
    if (earlier != nullptr) {
      addRepeated(setting, keyAttribute, *earlier);
    }
    name += raises ? "+" : "-";
  } else if (const XmlNode* const earlier = settings_.before(name, language)) {
    if (!firstCounts(*description, key)) {
      addRepeated(setting, keyAttribute, *earlier);
    } else if (!probe_.hasReported(setting, keyAttribute)) {
      addRepeated(setting, keyAttribute, *earlier, FindingCode::UNUSED_SETTING);
    }
  }
  settings_.add(name, language, setting, Occurrences::Keep::LAST);
}

}  // namespace orvane::nimbrel::check
