#include "check/NameWording.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <cstdio>

#include "check/Suggestions.h"
#include "check/Vocabulary.h"
#include "config/Namespaces.h"
#include "util/Ascii.h"
#include "util/StringUtil.h"
#include "util/Utf8.h"

namespace orvane::nimbrel::check {

std::string tagOf(const std::string& name) {
  return '<' + name + '>';
}

std::string tagOf(const config::ElementDescription& element) {
  return tagOf(displayName(element.name, element.isExtension));
}

namespace {

using config::ElementDescription;
using util::XmlNode;

/// Of a text that a sentence quotes.
constexpr std::size_t MAX_QUOTED = 60;

bool isInvisible(char32_t codePoint) noexcept {
  const auto character = static_cast<UChar32>(codePoint);
  return codePoint >= 0x7F && codePoint != util::internal::NOT_UTF8 &&
         (u_hasBinaryProperty(character, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0 ||
          u_isUWhiteSpace(character) != 0 || u_iscntrl(character) != 0);
}

std::string numberOf(char32_t codePoint) {
  char number[16];
  std::snprintf(number, sizeof(number), "U+%04X", static_cast<unsigned int>(codePoint));
  return number;
}

std::vector<std::string> tagsOf(std::vector<std::string> names) {
  std::transform(names.begin(), names.end(), names.begin(), [](auto& name) { return tagOf(name); });
  return names;
}

/// What there is in place of a name: all of a few; of many those that are most like it.
std::string choice(std::string_view written, std::vector<std::string> names) {
  constexpr std::size_t MOST = 8;
  constexpr std::size_t NEAREST = 3;
  if (names.size() <= MOST) {
    return listOf(names, " and ");
  }
  sortByLikeness(written, names);
  const std::size_t others = names.size() - NEAREST;
  names.resize(NEAREST);
  names.push_back(std::to_string(others) + " others (docs/elements.md lists all)");
  return listOf(names, " and ");
}

/// The namespace in which a name means something; empty when there is none.
std::string_view namespaceOfName(std::string_view name) {
  for (const ElementDescription* const known : config::elementDescriptions()) {
    if (known->name == name || findName(known->children, name) != nullptr) {
      return namespaceOf(*known);
    }
  }
  const auto* const attribute = findName(config::widgetDescription().attributes, name);
  return name == config::widgetDescription().name ? config::W3C_WIDGETS_NAMESPACE
         : attribute == nullptr                   ? std::string_view()
                                                  : namespaceOf(*attribute);
}

/// Whether a name has a prefix that is not declared.
bool hasPrefix(std::string_view name) noexcept {
  return name.find(':') != std::string_view::npos;
}

/// What to write then.
std::string missingDeclaration(std::string_view name) {
  const std::size_t colon = name.find(':');
  const std::string prefix(name.substr(0, colon));
  const std::string_view known =
      prefix == "tavlo" ? config::EXTENSION_NAMESPACE : namespaceOfName(name.substr(colon + 1));
  return "Unknown prefix; declare it in <widget> by xmlns:" + prefix + "=\"" +
         std::string(known.empty() ? "..." : known) + "\".";
}

/// A value as it may be written elsewhere; "..." for one that is long or would have to be escaped.
std::string example(std::string_view value) {
  const bool isPlain = value.size() <= MAX_QUOTED && invisibleIn(value).empty() &&
                       value.find_first_of("<>&\"") == std::string_view::npos;
  return value.empty() || !isPlain ? "..." : std::string(value);
}

std::string withValue(std::string_view name, std::string_view value) {
  return std::string(name) + "=\"" + example(value) + '"';
}

/// An element with a value as its text, or in the attribute that it needs.
std::string asElement(const ElementDescription& element, std::string_view value) {
  std::string tag = tagOf(element);
  if (element.textField.data() != nullptr) {
    return tag + example(value) + "</" + tag.substr(1);
  }
  for (const auto& row : element.attributes) {
    if (row.isRequired || row.name == element.uniqueAttribute) {
      return tag.substr(0, tag.size() - 1) + ' ' + withValue(row.name, value) + "/>";
    }
  }
  return tag;
}

/// An attribute that is an element or a setting in truth, or the text of its element; empty for
/// another one.
std::string otherFormSentence(const XmlNode& element, const XmlNode::Attribute& attribute) {
  const std::string is = quoted(attribute.name) + " is ";
  if (element.parent() == nullptr) {
    for (const ElementDescription* const known : config::elementDescriptions()) {
      if (known->name == attribute.name) {
        return is + "an element: write " + asElement(*known, attribute.value) + " in <widget>.";
      }
    }
    return {};
  }
  const auto* const known = element.parent()->parent() == nullptr ? describe(element) : nullptr;
  if (known != nullptr && known->textField.data() != nullptr && attribute.name == "value") {
    return "The value of " + tagOf(*known) + " is its text: write " +
           asElement(*known, attribute.value) + '.';
  }
  if (known == nullptr || findName(known->keys, attribute.name) == nullptr) {
    return {};
  }
  const auto& setting = known->children[0];
  return is + "a setting: write <" + displayName(setting.name, known->isExtension) + ' ' +
         withValue(setting.keyAttribute, attribute.name) + ' ' +
         withValue("value", attribute.value) + "/> in " + tagOf(*known) + '.';
}

}  // namespace

std::string listOf(const std::vector<std::string>& items, std::string_view conjunction) {
  std::string text;
  for (std::size_t i = 0; i < items.size(); ++i) {
    text += i == 0 ? "" : i + 1 == items.size() ? conjunction : ", ";
    text += items[i];
  }
  return text;
}

std::string_view beginningOf(std::string_view text, std::size_t size) noexcept {
  while (size > 0 && size < text.size() && util::internal::isUtf8Trail(text[size])) {
    --size;
  }
  return text.substr(0, size);
}

std::string quoted(std::string_view text) {
  const std::string_view beginning = beginningOf(text, MAX_QUOTED);
  std::string result = "\"";
  for (std::size_t at = 0; at < beginning.size();) {
    const std::size_t begin = at;
    const char32_t codePoint = util::internal::decodeUtf8(beginning, at);
    if (isInvisible(codePoint)) {
      result += '<' + numberOf(codePoint) + '>';
    } else {
      result += beginning.substr(begin, at - begin);
    }
  }
  return result + (beginning.size() == text.size() ? "\"" : "...\"");
}

std::string invisibleIn(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const char32_t codePoint = util::internal::decodeUtf8(text, at);
    if (isInvisible(codePoint)) {
      char name[100];
      UErrorCode error = U_ZERO_ERROR;
      u_charName(static_cast<UChar32>(codePoint), U_EXTENDED_CHAR_NAME, name, sizeof(name), &error);
      return "the invisible character " + numberOf(codePoint) +
             (U_SUCCESS(error) ? " (" + util::ascii::lowerCased(name) + ')' : "");
    }
  }
  return {};
}

std::string rootSentence(const Diagnostic& finding) {
  if (finding.element == nullptr) {
    return "The document has no root element.";
  }
  if (!finding.attribute.empty()) {
    return "<widget> must be in the namespace of W3C Widgets.";
  }
  const std::string_view name = finding.element->nameView();  // a prefix that is not declared
  return name.substr(name.find(':') + 1) == config::widgetDescription().name
             ? missingDeclaration(name)
             : "The root element must be <widget>.";
}

std::string unknownAttributeSentence(const Diagnostic& finding) {
  const XmlNode& element = *finding.element;
  const XmlNode::Attribute attribute = element.attributeAt(finding.attributeIndex);
  const std::string_view space = attribute.namespaceUri;
  if (space == config::W3C_WIDGETS_NAMESPACE) {
    return "Write the attribute without a prefix.";
  }
  if (space.data() != nullptr && !isExtension(space) && space != config::XML_NAMESPACE) {
    return "The prefix stands for the unknown namespace " + quoted(space) + '.';
  }
  std::string other = otherFormSentence(element, attribute);
  if (space.data() == nullptr && !other.empty()) {
    return other;
  }
  if (hasPrefix(attribute.name)) {
    return missingDeclaration(attribute.name);
  }
  const std::vector<std::string> names = namesOf(attributesOf(element));
  return tagOf(displayName(element)) + " has no attribute " + quoted(finding.attribute) +
         (names.empty() ? "" : "; it has " + choice(attribute.name, names)) + '.';
}

std::string unknownElementSentence(const Diagnostic& finding) {
  if (finding.attribute == "xmlns") {
    return "Unknown namespace.";
  }
  const XmlNode& element = *finding.element;
  const std::string_view space = element.namespaceView();
  if (space.data() == nullptr && hasPrefix(element.nameView())) {
    return missingDeclaration(element.nameView());
  }
  const std::string written(finding.name.empty() ? element.nameView() : finding.name);
  const std::string_view known = namespaceOfName(element.nameView());
  if (!known.empty() && known != space) {
    return tagOf(written) + " is in " +
           (space.empty() ? "no namespace" : "the namespace " + std::string(space)) +
           "; it belongs to " + std::string(known) + '.';
  }
  const std::vector<std::string> allowed = tagsOf(childNames(element.parent()));
  return "There is no " + tagOf(displayName(element)) + " in " +
         tagOf(displayName(*element.parent())) + ", which may contain " +
         (allowed.empty() ? "no elements" : choice(element.nameView(), allowed)) + '.';
}

std::string unexpectedSentence(const XmlNode& element) {
  const XmlNode& parent = *element.parent();
  return tagOf(displayName(parent)) + " may contain only " +
         listOf(tagsOf(childNames(&parent)), " and ") + "; the rest of it is not read.";
}

std::string misplacedSentence(const Diagnostic& finding) {
  const XmlNode& element = *finding.element;
  const std::string name = tagOf(displayName(element));
  if (finding.isText) {
    const bool lacksValue = element.attributeView("value").data() == nullptr &&
                            findName(attributesOf(element), "value") != nullptr;
    return "Text in " + name + " is not read" + (lacksValue ? "; write value=\"...\"." : ".");
  }
  return name + " is not read in " + tagOf(displayName(*element.parent())) + ", only in " +
         listOf(tagsOf(parentNames(element))) + '.';
}

std::string unknownKeySentence(const Diagnostic& finding) {
  const ElementDescription& parent = *describe(*finding.element->parent());
  const std::string key = zel::util::StringUtil::squeezeAndTrim(finding.value);
  const ElementDescription* const owner = ownerOfKey(key, parent);
  const std::string of = owner == nullptr ? "" : quoted(key) + " is a key of " + tagOf(*owner);
  if (finding.code == FindingCode::SIMILAR_KEY) {
    return (of.empty() ? "Unknown key" : of) +
           "; here it is stored as a setting of the application's own.";
  }
  if (!of.empty()) {
    return of + ", not of " + tagOf(parent) + '.';
  }
  return tagOf(parent) + " has no key " + quoted(key) + "; it has " +
         choice(key, namesOf(parent.keys)) + '.';
}

}  // namespace orvane::nimbrel::check
