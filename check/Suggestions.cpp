#include "check/Suggestions.h"

#include <algorithm>
#include <string_view>

#include "check/NearestName.h"
#include "check/PackageFiles.h"
#include "check/ValueAdvice.h"
#include "check/Vocabulary.h"
#include "config/Namespaces.h"
#include "util/IRIParser.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::check {
namespace {

using config::AttributeDescription;
using config::ChildDescription;
using config::ElementDescription;
using config::KeyDescription;
using util::XmlNode;

/// Names that authors take from other vocabularies.
constexpr struct {
  std::string_view written;
  std::string_view meant;
} SYNONYMS[] = {{"href", "src"},      {"src", "href"},      {"path", "src"},
                {"file", "src"},      {"uri", "origin"},    {"url", "origin"},
                {"uri", "href"},      {"url", "href"},      {"uri", "src"},
                {"url", "src"},       {"key", "name"},      {"name", "key"},
                {"id", "name"},       {"mail", "email"},    {"lang", "xml:lang"},
                {"href", "origin"},   {"source", "src"},    {"src", "resource"},
                {"href", "resource"}, {"path", "resource"}, {"file", "resource"}};

bool hasAttribute(const XmlNode& element, const AttributeDescription& attribute) {
  return element.attributeView(attribute.name, namespaceOf(attribute)).data() != nullptr;
}

std::string meantLanguage(const XmlNode& element) {
  return element.attributeView("lang", config::XML_NAMESPACE).data() == nullptr ? "xml:lang" : "";
}

/// The child of the root that an element was meant to be: of either vocabulary.
std::string meantChildOfRoot(const XmlNode& element, Reach reach) {
  NearestName suggestion(element.nameView(), reach);
  for (const ElementDescription* const known : config::elementDescriptions()) {
    suggestion.consider(known->name);
  }
  for (const ElementDescription* const known : config::elementDescriptions()) {
    if (known->name == suggestion.get()) {
      return displayName(known->name, known->isExtension);
    }
  }
  return {};
}

std::string meantElement(const XmlNode& element, Reach reach) {
  const XmlNode* const parent = element.parent();
  if (element.nameView().find(':') != std::string_view::npos) {
    return {};  // the prefix is the mistake
  }
  if (parent == nullptr) {
    NearestName suggestion(element.nameView(), reach);
    suggestion.consider("widget");
    return std::string(suggestion.get());
  }
  if (parent->parent() == nullptr) {
    return meantChildOfRoot(element, reach);
  }
  NearestName suggestion(element.nameView(), reach);
  const ElementDescription* const known = describe(*parent);
  for (const ChildDescription& child :
       known == nullptr ? config::DescriptionList<ChildDescription>() : known->children) {
    suggestion.consider(child.name);
  }
  return suggestion.get().empty() ? "" : displayName(suggestion.get(), known->isExtension);
}

std::string_view meantWord(const XmlNode& element, std::string_view attribute,
                           std::string_view value) {
  const KeyDescription* const key = attribute == "value" ? describeSetting(element) : nullptr;
  if (key != nullptr && key->words != nullptr) {
    for (const auto& words : {key->words->trigger, key->words->opposite}) {
      const auto* const word = std::find_if(
          words, words + 2, [&](std::string_view known) { return looksLike(value, known); });
      if (word != words + 2) {
        return *word;
      }
    }
    return suggestedWord(value, key->words->trigger[0], key->words->opposite[0]);
  }
  NearestName suggestion(value);
  for (const std::string_view direction : DIRECTIONS) {
    suggestion.consider(direction);
  }
  return suggestion.get();
}

std::string_view meantKey(const XmlNode& setting, std::string_view key, Reach reach) {
  const ElementDescription* const parent =
      setting.parent() == nullptr ? nullptr : describe(*setting.parent());
  return parent == nullptr ? std::string_view() : suggestedKey(*parent, key, reach);
}

/// The IRI that a text with blanks was meant to be. Blanks in an authority, or between two
/// addresses, are another mistake.
std::string meantIri(std::string_view text) {
  constexpr std::string_view SCHEME_END = "://";
  const std::size_t scheme = text.find(SCHEME_END);
  if (scheme != std::string_view::npos) {
    const std::size_t authority = scheme + SCHEME_END.size();
    const std::size_t end = text.find_first_of("/?#", authority);
    if (text.substr(0, end).find(' ') != std::string_view::npos ||
        text.find(SCHEME_END, authority) != std::string_view::npos) {
      return {};
    }
  }
  std::string iri;
  for (const char c : text) {
    iri += c == ' ' ? "%20" : std::string(1, c);
  }
  util::Option<util::IRI> parsed;
  return util::IRIParser().tryParse(iri.c_str(), parsed) ? iri : "";
}

}  // namespace

std::string suggestedAttribute(const XmlNode& element, std::size_t index,
                               config::DescriptionList<AttributeDescription> described,
                               Reach reach) {
  const XmlNode::Attribute attribute = element.attributeAt(index);
  const std::string_view written = attribute.name;
  if (attribute.namespaceUri == config::W3C_WIDGETS_NAMESPACE ||
      written.find(':') != std::string_view::npos) {
    return {};  // a mistake in the prefix
  }
  if (attribute.namespaceUri == config::XML_NAMESPACE) {
    return meantLanguage(element);
  }
  if (attribute.namespaceUri.data() != nullptr && !isExtension(attribute.namespaceUri)) {
    return std::string(suggestedNamespace(attribute.namespaceUri));
  }
  // The element's own names first; those in another namespace only if none of these is similar.
  for (const bool isExtension : {false, true}) {
    NearestName suggestion(written, reach);
    for (const AttributeDescription& description : described) {
      if (description.isExtension == isExtension) {
        suggestion.consider(description.name);
      }
    }
    if (!isExtension) {
      suggestion.consider("dir");  // which any element may have
    }
    if (!suggestion.get().empty()) {
      return displayName(suggestion.get(), isExtension);
    }
  }
  for (const auto& row : SYNONYMS) {
    if (!looksLike(row.written, written)) {
      continue;
    }
    if (row.meant == "xml:lang") {
      return meantLanguage(element);
    }
    for (const AttributeDescription& description : described) {
      if (description.name == row.meant && !hasAttribute(element, description)) {
        return std::string(row.meant);
      }
    }
  }
  return {};
}

std::string suggestionFor(const Diagnostic& finding, Reach reach) {
  // Of a short value only: a namespace may be long, and many elements may have it.
  const auto value = [&] { return zel::util::StringUtil::squeezeAndTrim(finding.value); };
  switch (finding.code) {
    case FindingCode::WRONG_ROOT:
      if (finding.attribute == "xmlns") {
        return config::W3C_WIDGETS_NAMESPACE;
      }
      return finding.element == nullptr ? "" : meantElement(*finding.element, reach);
    case FindingCode::UNKNOWN_ELEMENT:
      if (finding.attribute == "xmlns") {
        return std::string(suggestedNamespace(finding.value));
      } else {
        const std::string meant = meantElement(*finding.element, reach);
        return meant == finding.name ? "" : meant;  // its prefix stands for another namespace
      }
    case FindingCode::UNEXPECTED_CHILD:
      return meantElement(*finding.element, reach);
    case FindingCode::UNKNOWN_ATTRIBUTE:
      return suggestedAttribute(*finding.element, finding.attributeIndex,
                                attributesOf(*finding.element), reach);
    case FindingCode::UNKNOWN_KEY:
    case FindingCode::SIMILAR_KEY:
      return std::string(meantKey(*finding.element, value(), reach));
    case FindingCode::UNKNOWN_WORD:
      return std::string(meantWord(*finding.element, finding.attribute, value()));
    case FindingCode::NOT_AN_IRI:
    case FindingCode::REQUIRED_FEATURE_NAME:
      return meantIri(value());
    case FindingCode::INVALID_VALUE:
    case FindingCode::SUSPICIOUS_VALUE: {
      const auto advice = adviceOnValue(kindOfValue(*finding.element, finding.attribute), value());
      return advice ? advice->suggestion : "";
    }
    case FindingCode::MISSING_FILE:  // or it is there, for users of other languages
      return finding.name == resolvePath(value()) ? "" : std::string(finding.name);
    case FindingCode::OUTSIDE_PACKAGE:
      return finding.name == value() ? "" : std::string(finding.name);
    case FindingCode::UNKNOWN_TYPE:
      return std::string(finding.name);
    case FindingCode::NOT_A_BOOLEAN:
      return std::string(suggestedWord(value(), "true", "false"));
    default:
      return {};
  }
}

}  // namespace orvane::nimbrel::check
