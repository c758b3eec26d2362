#include "check/Wording.h"

#include <algorithm>
#include <vector>

#include "check/Suggestions.h"
#include "check/ValueAdvice.h"
#include "check/ValueWording.h"
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

/// The beginning of a text, at the end of a character.
std::string_view beginningOf(std::string_view text, std::size_t size) noexcept {
  while (size > 0 && size < text.size() && util::internal::isUtf8Trail(text[size])) {
    --size;
  }
  return text.substr(0, size);
}

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
  if (known.empty() && element.parent() != nullptr && isExtension(*element.parent())) {
    return "the rest of " + tag(displayName(*element.parent())) + " is not read";
  }
  return known.empty() ? "this element is ignored" : std::string(known);
}

std::string booleanConsequence(const XmlNode& element) {
  const std::string_view known = consequenceIn(BOOLEANS, displayName(element));
  return known.empty() ? "the attribute is ignored" : std::string(known);
}

std::string repeatedSentence(const Diagnostic& finding) {
  const XmlNode& element = *finding.element;
  const std::string other = inLine(finding.other);
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
    return "Contradicts the value" + other + "; " + '"' + std::string(key->words->trigger[0]) +
           '"' + " counts.";
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
  return "Not read here, only in " + listOf(parents) + '.';
}

std::string textSentence(const XmlNode& element) {
  const auto known = attributesOf(element);
  const bool lacksValue =
      element.attributeView("value").data() == nullptr &&
      std::any_of(known.begin(), known.end(), [](const auto& row) { return row.name == "value"; });
  return lacksValue ? "Text is not read here; write value=\"...\"." : "Text is not read here.";
}

std::string unexpectedSentence(const XmlNode& element) {
  const XmlNode& parent = *element.parent();
  std::vector<std::string> allowed;
  if (const ElementDescription* const known = describe(parent)) {
    for (const auto& child : known->children) {
      allowed.push_back(tag(displayName(child.name, known->isExtension)));
    }
  }
  return "Must be " + listOf(allowed) + "; the rest of " + tag(displayName(parent)) +
         " is not read.";
}

/// The namespace in which a name means something; empty when there is none.
std::string_view namespaceOf(std::string_view name) {
  const auto isName = [&](const auto& known) { return known.name == name; };
  if (isName(config::widgetDescription())) {
    return config::W3C_WIDGETS_NAMESPACE;
  }
  for (const ElementDescription* const known : config::elementDescriptions()) {
    if (isName(*known) || std::any_of(known->children.begin(), known->children.end(), isName)) {
      return known->isExtension ? std::string_view(config::EXTENSION_NAMESPACE)
                                : std::string_view(config::W3C_WIDGETS_NAMESPACE);
    }
  }
  const auto attributes = config::widgetDescription().attributes;
  return std::any_of(attributes.begin(), attributes.end(),
                     [&](const auto& known) { return known.isExtension && isName(known); })
             ? config::EXTENSION_NAMESPACE
             : "";
}

/// What to write for a name whose prefix is not declared; nothing for a name without one.
std::string missingDeclaration(std::string_view name) {
  const std::size_t colon = name.find(':');
  if (colon == std::string_view::npos) {
    return {};
  }
  const std::string prefix(name.substr(0, colon));
  const std::string_view known =
      prefix == "tavlo" ? config::EXTENSION_NAMESPACE : namespaceOf(name.substr(colon + 1));
  return "declare it in <widget> by xmlns:" + prefix + "=\"" +
         std::string(known.empty() ? "..." : known) + "\".";
}

std::string unknownAttributeSentence(const Diagnostic& finding) {
  const XmlNode::Attribute attribute = finding.element->attributeAt(finding.attributeIndex);
  if (attribute.namespaceUri == config::W3C_WIDGETS_NAMESPACE) {
    return "Write the attribute without a prefix.";
  }
  if (attribute.namespaceUri.data() != nullptr && !isExtension(attribute.namespaceUri) &&
      attribute.namespaceUri != config::XML_NAMESPACE) {
    return "Unknown namespace of the prefix.";
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
  if (!finding.attribute.empty()) {
    return "The root element must be in the namespace of W3C Widgets.";
  }
  const std::string_view name = finding.element->nameView();
  const std::size_t colon = name.find(':');  // only where the prefix is not declared
  return colon != std::string_view::npos &&
                 name.substr(colon + 1) == config::widgetDescription().name
             ? "Unknown prefix; " + missingDeclaration(name)
             : "The root element must be <widget>.";
}

std::string otherLanguageSentence(const Diagnostic& finding) {
  return finding.other == nullptr
             ? "Not used; there is another one for the user's languages."
             : "Not used; the one" + inLine(finding.other) + " is in a better language.";
}

std::string missingSentence(const Diagnostic& finding) {
  if (finding.isOfPackage) {
    return "Nothing to start; write <content src=\"...\"/>, or add index.html.";
  }
  const bool isForOthers = !finding.name.empty() && suggestionFor(finding).empty();
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
  const bool isFolder =
      finding.name.size() > finding.value.size() && finding.name[finding.value.size()] == '/';
  if (isFolder) {
    return "Is a file, and in \"" + std::string(beginningOf(finding.name, MAX_NAME_SIZE)) +
           "\" a folder; programs differ in which one they take.";
  }
  return "Differs from \"" + std::string(beginningOf(finding.name, MAX_NAME_SIZE)) +
         "\" by case only; some systems take one for the other.";
}

std::string sentenceOf(const Diagnostic& finding) {
  const std::string_view ignored = "the attribute is ignored";
  const bool isEmpty = finding.value.data() != nullptr;
  switch (finding.code) {
    case FindingCode::DOCUMENT_REJECTED:
      return std::string(finding.value);
    case FindingCode::WRONG_ROOT:
      return rootSentence(finding);
    case FindingCode::REQUIRED_FEATURE_NAME:
      return "The name of a required feature must be an IRI; the document is rejected.";
    case FindingCode::NUMBER_REJECTED:
      return numberSentence(finding, "the document is rejected");
    case FindingCode::MISSING_ATTRIBUTE:
      return (isEmpty ? "Empty; " : "Missing attribute; ") + consequenceFor(*finding.element) + '.';
    case FindingCode::EMPTY_VALUE:
      return "Empty; the attribute is ignored.";
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
      return "Must be \"true\" or \"false\"; " + booleanConsequence(*finding.element) + '.';
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
      return "Element of another vocabulary; it is kept for programs that know it.";
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
      return suspiciousSentence(finding);
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
  if (finding.code != FindingCode::DOCUMENT_REJECTED) {
    wording.value = finding.attribute == "xmlns" ? beginningOf(finding.value, MAX_NAMESPACE_SIZE)
                                                 : finding.value;
  }
  wording.sentence = sentenceOf(finding);
  wording.suggestion = finding.code == FindingCode::NOT_AN_ORIGIN
                           ? adviceOnOrigin(StringUtil::squeezeAndTrim(finding.value)).suggestion
                           : suggestionFor(finding);
  return wording;
}

}  // namespace orvane::nimbrel::check
