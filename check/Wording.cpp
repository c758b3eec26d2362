#include "check/Wording.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <vector>

#include "check/Meant.h"
#include "check/Numbers.h"
#include "check/Origin.h"
#include "check/Values.h"
#include "check/Vocabulary.h"
#include "check/XmlMessage.h"
#include "config/Namespaces.h"
#include "util/StringUtil.h"
#include "util/Utf8.h"

namespace orvane::nimbrel::check {
namespace {

using config::ElementDescription;
using config::FindingCode;
using config::KeyDescription;
using config::KeyRule;
using config::Repetition;
using config::ValueKind;
using util::XmlNode;
using zel::util::StringUtil;

/// A document may give very many elements one long namespace.
constexpr std::size_t MAX_NAMESPACE_SIZE = 200;

/// What becomes of an element without its attribute.
constexpr struct {
  std::string_view element;
  std::string_view consequence;
} IGNORED[] = {
    {"content", "there is no start file"},        {"icon", "this icon is ignored"},
    {"preference", "this preference is ignored"}, {"feature", "this feature is ignored"},
    {"param", "this parameter is ignored"},       {"access", "this access request is ignored"},
    {"tavlo:export", "this export is ignored"},
};

/// What becomes of a boolean that is none.
constexpr struct {
  std::string_view element;
  std::string_view consequence;
} BOOLEANS[] = {
    {"preference", "the preference is not read-only"},
    {"feature", "the feature is required"},
    {"access", "this access request is ignored"},
};

/// The ranges of numbers that the parser does not tell by their kind.
constexpr struct {
  std::string_view key;
  std::string_view range;
} RANGES[] = {
    {"defaultFontSize", "of at least 1"},
    {"minimumFontSize", "of at least 0"},
    {"zoomFactor", "above 0"},
    {"ApplicationCacheLoadDelay", "of at least 0"},
};

template <typename Table>
std::string_view consequenceIn(const Table& table, std::string_view element) {
  for (const auto& row : table) {
    if (row.element == element) {
      return row.consequence;
    }
  }
  return {};
}

std::string tag(const std::string& name) {
  return '<' + name + '>';
}

/// " in line 7"; nothing when the line is not known.
std::string inLine(const XmlNode* element) {
  const unsigned int line = element == nullptr ? 0 : element->getLineNumber();
  return line == 0 ? "" : " in line " + std::to_string(line);
}

/// What becomes of an element that is wrong in itself.
std::string consequenceFor(const XmlNode& element) {
  const std::string_view known = consequenceIn(IGNORED, displayName(element));
  if (known.empty() && element.parent() != nullptr) {
    return "the rest of " + tag(displayName(*element.parent())) + " is not read";
  }
  return std::string(known);
}

/// "a", "a or b", "a, b or c".
std::string list(const std::vector<std::string>& items) {
  std::string text;
  for (std::size_t i = 0; i < items.size(); ++i) {
    text += (i == 0 ? "" : i + 1 == items.size() ? " or " : ", ") + items[i];
  }
  return text;
}

std::string quotedList(std::initializer_list<std::string_view> words) {
  std::vector<std::string> quoted;
  for (const std::string_view word : words) {
    const std::string text = '"' + std::string(word) + '"';
    if (!word.empty() && std::find(quoted.begin(), quoted.end(), text) == quoted.end()) {
      quoted.push_back(text);
    }
  }
  return list(quoted);
}

std::string wordSentence(const Diagnostic& finding) {
  const KeyDescription* const key =
      finding.attribute == "value" ? describeSetting(*finding.element) : nullptr;
  if (key == nullptr || key->words == nullptr) {
    return "Must be " + quotedList({DIRECTIONS[0], DIRECTIONS[1], DIRECTIONS[2], DIRECTIONS[3]}) +
           "; the attribute is ignored.";
  }
  const auto& [trigger, opposite] = *key->words;
  const std::string must =
      "Must be " + quotedList({trigger[0], opposite[0], trigger[1], opposite[1]});
  return must + (key->rule == KeyRule::ONLY_RAISED
                     ? "; the value is ignored."
                     : "; it counts as " + quotedList({opposite[0]}) + '.');
}

std::string numberSentence(const Diagnostic& finding, std::string_view consequence) {
  const std::string value = StringUtil::squeezeAndTrim(finding.value);
  const KeyDescription* const key =
      finding.attribute == "value" ? describeSetting(*finding.element) : nullptr;
  const auto* const range =
      std::find_if(std::begin(RANGES), std::end(RANGES),
                   [&](const auto& row) { return key != nullptr && row.key == key->name; });
  const std::string end = "; " + std::string(consequence) + '.';
  if (value.empty()) {
    return "A number is needed" + end;
  }
  if (range != std::end(RANGES)) {
    return "Must be a number " + std::string(range->range) + end;
  }
  const bool isNumber = value.find_first_not_of("0123456789") == std::string::npos;
  if (isNumber && value.find_first_not_of('0') != std::string::npos) {
    return "The largest number is 4294967295" + end;
  }
  return (key == nullptr ? "Must be a number above 0" : "Must be a number") + end;
}

std::string repeatedSentence(const Diagnostic& finding) {
  const XmlNode& element = *finding.element;
  const std::string other = inLine(finding.other);
  if (element.parent() == nullptr) {
    return "Repeated; the first one counts.";
  }
  if (const ElementDescription* const known = describe(element)) {
    switch (known->repetition) {
      case Repetition::FIRST_COUNTS:
        return "Only the first " + tag(displayName(element)) + " counts; it is" +
               (other.empty() ? " an earlier one." : other + '.');
      case Repetition::RESTARTS:
        return "Only the last " + tag(displayName(element)) + " counts; it replaces the one" +
               (other.empty() ? " before." : other + '.');
      default:
        return "Repeated; only the one" + other + " counts.";
    }
  }
  const KeyDescription* const key = describeSetting(element);
  if (key != nullptr && key->rule == KeyRule::ONLY_RAISED) {
    return "Contradicts the value" + other + "; " + quotedList({key->words->trigger[0]}) +
           " counts.";
  }
  return "Repeated; it replaces the one" + (other.empty() ? " before." : other + '.');
}

std::string misplacedSentence(const XmlNode& element) {
  std::vector<std::string> parents;
  if (describe(element) != nullptr) {
    parents.push_back(tag("widget"));
  }
  for (const ElementDescription* const known : config::elementDescriptions()) {
    if (describeChild(*known, element) != nullptr) {
      parents.push_back(tag(displayName(known->name, known->isExtension)));
    }
  }
  return "Not read here, only in " + list(parents) + '.';
}

std::string textSentence(const XmlNode& element) {
  const auto known = attributesOf(element);
  const bool lacksValue =
      element.attributeView("value").data() == nullptr &&
      std::any_of(known.begin(), known.end(), [](const auto& row) { return row.name == "value"; });
  return lacksValue ? "Text is not read here; write value=\"...\"." : "Text is not read here.";
}

std::string valueSentence(const Diagnostic& finding) {
  const auto advice = adviceOnValue(kindOfValue(*finding.element, finding.attribute),
                                    StringUtil::squeezeAndTrim(finding.value));
  return advice ? advice->sentence + "; it is kept as written." : "";
}

std::string unexpectedSentence(const XmlNode& element) {
  const XmlNode& parent = *element.parent();
  std::vector<std::string> allowed;
  if (const ElementDescription* const known = describe(parent)) {
    for (const auto& child : known->children) {
      allowed.push_back(tag(displayName(child.name, known->isExtension)));
    }
  }
  return "Must be " + list(allowed) + "; the rest of " + tag(displayName(parent)) + " is not read.";
}

/// What to write for a name whose prefix is not declared; nothing for a name without one.
std::string missingDeclaration(std::string_view name) {
  const std::string_view prefix = name.substr(0, name.find(':'));
  return prefix.size() == name.size() ? ""
                                      : "declare it in <widget> by xmlns:" + std::string(prefix) +
                                            "=\"" + config::EXTENSION_NAMESPACE + "\".";
}

std::string unknownAttributeSentence(const Diagnostic& finding) {
  const XmlNode::Attribute attribute = finding.element->attributeAt(finding.attributeIndex);
  if (attribute.namespaceUri == config::W3C_WIDGETS_NAMESPACE) {
    return "Write the attribute without a prefix.";
  }
  const std::string declaration =
      attribute.namespaceUri.data() == nullptr ? missingDeclaration(attribute.name) : std::string();
  return declaration.empty() ? "Unknown attribute." : "Unknown prefix; " + declaration;
}

std::string unknownElementSentence(const Diagnostic& finding) {
  if (finding.attribute == "xmlns") {
    return "Unknown namespace.";
  }
  if (finding.element->namespaceView().data() != nullptr) {
    return "Unknown element.";
  }
  const std::string declaration = missingDeclaration(finding.element->nameView());
  return declaration.empty() ? "Unknown element; it is in no namespace."
                             : "Unknown prefix; " + declaration;
}

std::string rootSentence(const Diagnostic& finding) {
  if (finding.element == nullptr) {
    return "The document has no root element.";
  }
  return finding.attribute.empty() ? "The root element must be <widget>."
                                   : "The root element must be in the namespace of W3C Widgets.";
}

std::string otherLanguageSentence(const Diagnostic& finding) {
  return finding.other == nullptr
             ? "Not used; there is another one for the user's languages."
             : "Not used; the one" + inLine(finding.other) + " is in a better language.";
}

std::string partialSentence(const Diagnostic& finding) {
  const ValueKind kind = kindOfValue(*finding.element, finding.attribute);
  return "Not a valid number; " + usedNumber(kind, StringUtil::squeezeAndTrim(finding.value)) +
         " is used.";
}

std::string sentenceOf(const Diagnostic& finding) {
  const std::string_view ignored = "the attribute is ignored";
  const bool isEmpty = finding.value.data() != nullptr;
  switch (finding.code) {
    case FindingCode::DOCUMENT_REJECTED:
      return explainXml(finding.value);
    case FindingCode::WRONG_ROOT:
      return rootSentence(finding);
    case FindingCode::REQUIRED_FEATURE_NAME:
      return "Not an IRI, as the name of a required feature must be; the document is rejected.";
    case FindingCode::NUMBER_REJECTED:
      return numberSentence(finding, "the document is rejected");
    case FindingCode::MISSING_ATTRIBUTE:
      return (isEmpty ? "Empty; " : "Missing attribute; ") + consequenceFor(*finding.element) + '.';
    case FindingCode::EMPTY_VALUE:
      return "Empty; the attribute is ignored.";
    case FindingCode::NOT_AN_IRI:
      return "Not an IRI, which begins with a scheme; " +
             (finding.attribute == "name" ? consequenceFor(*finding.element)
                                          : std::string(ignored)) +
             '.';
    case FindingCode::NOT_AN_ORIGIN:
      return adviceOnOrigin(StringUtil::squeezeAndTrim(finding.value)).sentence + "; " +
             consequenceFor(*finding.element) + '.';
    case FindingCode::NOT_A_NUMBER:
    case FindingCode::OUT_OF_RANGE:
      return numberSentence(finding,
                            finding.attribute == "value" ? "the value is ignored" : ignored);
    case FindingCode::NOT_A_BOOLEAN:
      return "Must be \"true\" or \"false\"; " +
             std::string(consequenceIn(BOOLEANS, displayName(*finding.element))) + '.';
    case FindingCode::INVALID_APPLICATION_ID:
      return "Must be 1 to 32 lower-case ASCII letters and digits; the attribute is ignored.";
    case FindingCode::UNKNOWN_WORD:
      return wordSentence(finding);
    case FindingCode::UNKNOWN_KEY:
      return "Unknown key.";
    case FindingCode::UNKNOWN_ELEMENT:
      return unknownElementSentence(finding);
    case FindingCode::UNEXPECTED_CHILD:
      return unexpectedSentence(*finding.element);
    case FindingCode::REPEATED:
      return repeatedSentence(finding);
    case FindingCode::UNUSED_SETTING:
      return "No effect; a font size is set already" + inLine(finding.other) + '.';
    case FindingCode::PARTIAL_NUMBER:
      return partialSentence(finding);
    case FindingCode::UNKNOWN_ATTRIBUTE:
      return unknownAttributeSentence(finding);
    case FindingCode::FOREIGN_ELEMENT:
      return "Element of another vocabulary; only programs that know it read it.";
    case FindingCode::MISPLACED:
      return finding.isText ? textSentence(*finding.element) : misplacedSentence(*finding.element);
    case FindingCode::NOT_READ:
      return "Not read because of the mistake" + inLine(finding.other) + '.';
    case FindingCode::SIMILAR_KEY:
      return "Unknown key; it is stored as a setting of the application's own.";
    case FindingCode::UNUSED_LANGUAGE:
      return finding.value == "*" ? "Not a language; no user gets this element."
                                  : "Not used; the user does not ask for this language.";
    case FindingCode::OTHER_LANGUAGE:
      return otherLanguageSentence(finding);
    case FindingCode::SUSPICIOUS_VALUE:
      return valueSentence(finding);
    case FindingCode::UNUSED_ATTRIBUTE:
      return "No effect; origin=\"*\" includes all subdomains.";
  }
  return {};
}

/// The beginning of a text, at the end of a character.
std::string_view beginningOf(std::string_view text, std::size_t size) noexcept {
  while (size > 0 && size < text.size() && util::internal::isUtf8Trail(text[size])) {
    --size;
  }
  return text.substr(0, size);
}

}  // namespace

Wording wordingOf(const Diagnostic& finding) {
  Wording wording;
  if (finding.element != nullptr) {
    wording.element = displayName(*finding.element);
  }
  wording.attribute = finding.attribute;
  if (finding.code != FindingCode::DOCUMENT_REJECTED) {
    wording.value = finding.attribute == "xmlns" ? beginningOf(finding.value, MAX_NAMESPACE_SIZE)
                                                 : finding.value;
  }
  wording.sentence = sentenceOf(finding);
  wording.suggestion = finding.code == FindingCode::NOT_AN_ORIGIN
                           ? adviceOnOrigin(StringUtil::squeezeAndTrim(finding.value)).suggestion
                           : meantBy(finding);
  return wording;
}

}  // namespace orvane::nimbrel::check
