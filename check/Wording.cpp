#include "check/Wording.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <vector>

#include "check/NameWording.h"
#include "check/Suggestions.h"
#include "check/ValueAdvice.h"
#include "check/Vocabulary.h"
#include "config/Namespaces.h"
#include "util/StringUtil.h"
#include "util/Utf8.h"

namespace orvane::nimbrel::check {
namespace {

using config::ElementDescription;
using config::KeyDescription;
using config::KeyRule;
using config::Repetition;
using util::XmlNode;
using zel::util::StringUtil;

/// A document may give very many elements one long namespace.
constexpr std::size_t MAX_NAMESPACE_SIZE = 200;
/// Of a name in a package that a sentence quotes.
constexpr std::size_t MAX_NAME_SIZE = 100;
/// Of a value that is searched for invisible characters.
constexpr std::size_t MAX_SEARCHED = 1000;

/// What becomes of an element without its attribute, or with a boolean that is none.
constexpr struct {
  std::string_view element;
  std::string_view ignored;
  std::string_view boolean = "the attribute is ignored";
} CONSEQUENCES[] = {
    {"content", "there is no start file"},
    {"icon", "this icon is ignored"},
    {"preference", "this preference is ignored", "the preference is not read-only"},
    {"feature", "this feature is ignored", "the feature is required"},
    {"param", "this parameter is ignored"},
    {"access", "this access request is ignored", "this access request is ignored"},
    {"tavlo:export", "this export is ignored"},
    {"", ""},  // any other
};

const auto& consequencesFor(const XmlNode& element) {
  const std::string name = displayName(element);
  return *std::find_if(std::begin(CONSEQUENCES), std::end(CONSEQUENCES) - 1,
                       [&](const auto& row) { return row.element == name; });
}

/// " in line 7"; " before" when the line is not known.
std::string inLine(const XmlNode* element) {
  const unsigned int line = element == nullptr ? 0 : element->getLineNumber();
  return line == 0 ? " before" : " in line " + std::to_string(line);
}

/// What becomes of an element that is wrong in itself.
std::string consequenceFor(const XmlNode& element) {
  const std::string_view known = consequencesFor(element).ignored;
  if (known.empty() && element.parent() != nullptr &&
      isExtension(element.parent()->namespaceView())) {
    return "the rest of " + tagOf(displayName(*element.parent())) + " is not read";
  }
  return known.empty() ? "this element is ignored" : std::string(known);
}

std::string repeatedSentence(const Diagnostic& finding) {
  const XmlNode& element = *finding.element;
  const std::string other = inLine(finding.other);
  if (const ElementDescription* const known = describe(element)) {
    switch (known->repetition) {
      case Repetition::FIRST_COUNTS:
        return "Only the first " + tagOf(displayName(element)) + " counts; it is" + other + '.';
      case Repetition::RESTARTS:
        return "Only the last " + tagOf(displayName(element)) + " counts; it replaces the one" +
               other + '.';
      default:
        return "Repeated; only the one" + other + " counts.";
    }
  }
  const KeyDescription* const key = describeSetting(element);
  if (key != nullptr && key->rule == KeyRule::ONLY_RAISED) {
    return "Contradicts the value" + other + "; " + '"' + std::string(key->words->trigger[0]) +
           '"' + " counts.";
  }
  return "Repeated; it replaces the one" + other + '.';
}

/// Why an element does without an attribute, or what it needs.
std::string missingAttributeSentence(const Diagnostic& finding) {
  const std::string name(finding.attribute);
  const std::string consequence = consequenceFor(*finding.element) + '.';
  return finding.value.data() != nullptr ? name + " must not be empty; " + consequence
                                         : tagOf(displayName(*finding.element)) + " needs " + name +
                                               "=\"...\"; without it " + consequence;
}

std::string unusedLanguageSentence(const Diagnostic& finding) {
  if (finding.value != "*") {
    return "Not used; the user does not ask for this language.";
  }
  const ElementDescription* const known = describe(*finding.element);
  const bool hasText = known != nullptr && known->textField.data() != nullptr;
  return hasText ? "No user has this language, so nobody sees this text."
                 : "No user has this language, so nobody gets this element.";
}

std::string otherLanguageSentence(const Diagnostic& finding) {
  return finding.other == nullptr
             ? "Not used; there is another one for the user's languages."
             : "Not used; the one" + inLine(finding.other) + " is in a better language.";
}

std::string missingSentence(const Diagnostic& finding) {
  if (finding.isOfPackage) {
    const std::string_view meant = finding.name.empty() ? "..." : finding.name;
    return "Nothing to start; write <content src=\"" +
           std::string(beginningOf(meant, MAX_NAME_SIZE)) + "\"/>, or add index.html.";
  }
  const bool isForOthers = !finding.name.empty() && suggestionFor(finding).text.empty();
  return isForOthers ? "In the package for other languages only." : "No such file in the package.";
}

std::string outsideSentence(const Diagnostic& finding) {
  if (!finding.isOfPackage) {
    return "Leads out of the package.";
  }
  return finding.name == finding.value
             ? "A symbolic link, which may lead out of the package; pack the file instead."
             : "The name of this file leads out of the package.";
}

std::string ambiguousSentence(const Diagnostic& finding) {
  if (finding.name == finding.value) {
    return "Stands twice in the package; which one counts is not certain.";
  }
  const std::string other = '"' + std::string(beginningOf(finding.name, MAX_NAME_SIZE)) + '"';
  const bool isFolder =
      finding.name.size() > finding.value.size() && finding.name[finding.value.size()] == '/';
  return isFolder
             ? "Is a file, and in " + other + " a folder; programs differ in which one they take."
             : "Differs from " + other + " by case only; some systems take one for the other.";
}

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

std::string quotedList(std::initializer_list<std::string_view> words) {
  std::vector<std::string> quoted;
  for (const std::string_view word : words) {
    const std::string text = '"' + std::string(word) + '"';
    if (!word.empty() && std::find(quoted.begin(), quoted.end(), text) == quoted.end()) {
      quoted.push_back(text);
    }
  }
  return listOf(quoted);
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

std::string iriSentence(const Diagnostic& finding, std::string_view consequence) {
  const std::string_view value = StringUtil::trimmed(finding.value);
  const std::size_t forbidden = value.find_first_of("{}|\\^`<>\"");
  const std::string mistake =
      value.find(':') == std::string_view::npos
          ? "Must be a full address that begins with a scheme, such as https://..."
      : value.find(' ') != std::string_view::npos ? "An address must not contain blanks"
      : forbidden != std::string_view::npos
          ? std::string("\"") + value[forbidden] + "\" may not stand in an address"
          : "Not a valid address";
  return mistake + "; " + std::string(consequence) + '.';
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

std::string partialSentence(const Diagnostic& finding) {
  const config::ValueKind kind = kindOfValue(*finding.element, finding.attribute);
  const std::string value = StringUtil::squeezeAndTrim(finding.value);
  const bool isTooLarge = value.find_first_not_of("0123456789") == std::string::npos;
  return "Read as " + usedNumber(kind, value) +
         (isTooLarge ? "; there is no larger number."
          : kind == config::ValueKind::DECIMAL
              ? "; write a number such as 1.5 (no unit or comma)."
              : "; write digits only (no unit, sign, comma or 0x).");
}

std::string sentenceOf(const Diagnostic& finding) {
  const std::string_view ignored = "the attribute is ignored";
  switch (finding.code) {
    case FindingCode::DOCUMENT_REJECTED:
    case FindingCode::UNUSABLE_PACKAGE:
      return std::string(finding.value);
    case FindingCode::WRONG_ROOT:
      return rootSentence(finding);
    case FindingCode::REQUIRED_FEATURE_NAME:
      return iriSentence(finding, "the feature is required, so the document is rejected");
    case FindingCode::NUMBER_REJECTED:
      return numberSentence(finding, "the document is rejected");
    case FindingCode::MISSING_ATTRIBUTE:
      return missingAttributeSentence(finding);
    case FindingCode::EMPTY_VALUE:
      return std::string(finding.attribute) + " is empty and therefore ignored.";
    case FindingCode::NOT_AN_IRI:
      return iriSentence(finding, finding.attribute == "name" ? consequenceFor(*finding.element)
                                                              : std::string(ignored));
    case FindingCode::NOT_AN_ORIGIN:
      return adviceOnOrigin(StringUtil::squeezeAndTrim(finding.value)).sentence + "; " +
             consequenceFor(*finding.element) + '.';
    case FindingCode::NOT_A_NUMBER:
    case FindingCode::OUT_OF_RANGE:
      return numberSentence(finding,
                            finding.attribute == "value" ? "the value is ignored" : ignored);
    case FindingCode::NOT_A_BOOLEAN:
      return "Must be \"true\" or \"false\"; " +
             std::string(consequencesFor(*finding.element).boolean) + '.';
    case FindingCode::INVALID_APPLICATION_ID:
      return "Must be 1 to 32 lower-case ASCII letters and digits; the attribute is ignored.";
    case FindingCode::UNKNOWN_WORD:
      return wordSentence(finding);
    case FindingCode::UNKNOWN_KEY:
    case FindingCode::SIMILAR_KEY:
      return unknownKeySentence(finding);
    case FindingCode::UNKNOWN_ELEMENT:
      return unknownElementSentence(finding);
    case FindingCode::UNEXPECTED_CHILD:
      return unexpectedSentence(*finding.element);
    case FindingCode::REPEATED:
      return repeatedSentence(finding);
    case FindingCode::UNUSED_SETTING:
      return "No effect; a font size is set already" +
             (finding.other == nullptr ? "" : inLine(finding.other)) + '.';
    case FindingCode::PARTIAL_NUMBER:
      return partialSentence(finding);
    case FindingCode::UNKNOWN_ATTRIBUTE:
      return unknownAttributeSentence(finding);
    case FindingCode::FOREIGN_ELEMENT:
      return "Element of another vocabulary; it is kept for programs that know it.";
    case FindingCode::MISPLACED:
      return misplacedSentence(finding);
    case FindingCode::NOT_READ:
      return "Not read because of the mistake" + inLine(finding.other) + '.';
    case FindingCode::UNUSED_LANGUAGE:
      return unusedLanguageSentence(finding);
    case FindingCode::OTHER_LANGUAGE:
      return otherLanguageSentence(finding);
    case FindingCode::INVALID_VALUE:
    case FindingCode::SUSPICIOUS_VALUE:
      return adviceOnValue(kindOfValue(*finding.element, finding.attribute),
                           StringUtil::squeezeAndTrim(finding.value))
          .value_or(Advice())
          .sentence;
    case FindingCode::MISSING_FILE:
      return missingSentence(finding);
    case FindingCode::OUTSIDE_PACKAGE:
      return outsideSentence(finding);
    case FindingCode::UNKNOWN_TYPE:
      return "Not a type of W3C Widgets; use \"text/html\", \"application/xhtml+xml\" or "
             "\"image/svg+xml\".";
    case FindingCode::AMBIGUOUS_NAME:
      return ambiguousSentence(finding);
    case FindingCode::UNLISTED_BYTES:
      return std::string(finding.name) + " bytes of the package belong to no file; pack it again.";
    case FindingCode::UNUSED_ATTRIBUTE:
      return "No effect; origin=\"*\" includes all subdomains.";
  }
  return {};
}

}  // namespace

Wording wordingOf(const Diagnostic& finding) {
  Wording wording;
  if (finding.element != nullptr) {
    wording.element = displayName(*finding.element);
  }
  wording.attribute = finding.attribute;
  if (finding.code != FindingCode::DOCUMENT_REJECTED &&
      finding.code != FindingCode::UNUSABLE_PACKAGE) {
    wording.value = finding.attribute == "xmlns" ? beginningOf(finding.value, MAX_NAMESPACE_SIZE)
                                                 : finding.value;
  }
  wording.sentence = sentenceOf(finding);
  // What nobody sees may be the mistake, and has to be named.
  const bool isValue = finding.code != FindingCode::UNKNOWN_ATTRIBUTE &&
                       finding.attributeIndex != Diagnostic::NO_INDEX;
  const std::string invisible =
      invisibleIn(isValue ? beginningOf(finding.value, MAX_SEARCHED) : finding.attribute);
  if (!invisible.empty()) {
    wording.sentence += (isValue ? " The value has " : " The name has ") + invisible + '.';
  }
  wording.suggestion = suggestionFor(finding).text;
  return wording;
}

}  // namespace orvane::nimbrel::check
