#include "check/TreeRules.h"

#include <algorithm>
#include <string>

#include "check/Suggestions.h"
#include "check/ValueAdvice.h"
#include "check/Vocabulary.h"
#include "config/Namespaces.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::check {

using config::ChildDescription;
using config::ElementDescription;
using config::KeyDescription;
using config::ValueKind;
using util::XmlNode;
using zel::util::StringUtil;

namespace {

/// Whether a name was probably meant to be another one.
bool isNear(std::string_view written, std::string_view meant) {
  return nearestName(written, {std::string(meant)}).isCertain;
}

}  // namespace

void TreeRules::checkChild(const XmlNode& element, const XmlNode* stopped) {
  const ElementDescription* const description = describe(element);
  if (description == nullptr) {
    return checkUnknown(element);
  }
  if (description->textField.data() != nullptr) {
    checkAttributes(element, description->attributes);
    checkText(element);
  } else {
    checkElement(element, description->attributes);
    checkChildren(element, *description, stopped);
  }
}

void TreeRules::checkElement(const XmlNode& element, Attributes known) {
  checkAttributes(element, known);
  for (const XmlNode* child = element.firstChild(); child != nullptr;
       child = child->nextSibling()) {
    const std::string_view text = StringUtil::trimmed(child->contentView());
    if (!text.empty()) {
      Diagnostic& finding = report_.add(FindingCode::MISPLACED, &element);
      finding.isText = true;
      finding.value = text;
      return;  // once an element
    }
  }
}

void TreeRules::checkAttributes(const XmlNode& element, std::optional<Attributes> known) {
  for (std::uint32_t i = 0; i < element.attributeCount(); ++i) {
    const XmlNode::Attribute attribute = element.attributeAt(i);
    const bool isPlain = attribute.namespaceUri.data() == nullptr;
    if (attribute.namespaceUri == config::XML_NAMESPACE) {
      if (attribute.name == "lang") {
        checkValue(element, i, ValueKind::LANGUAGE);
      } else if (isNear(attribute.name, "lang")) {
        report_.add(FindingCode::UNKNOWN_ATTRIBUTE, element, i);
      }
    } else if (isPlain && attribute.name == "dir") {
      if (!isDirection(attribute.value)) {
        report_.add(FindingCode::UNKNOWN_WORD, element, i);
      }
    } else if (!known) {
      // What others there are is for programs that know the elements.
      if (isPlain && isDirection(attribute.value) && isNear(attribute.name, "dir")) {
        report_.add(FindingCode::UNKNOWN_ATTRIBUTE, element, i);
      }
    } else if (isPlain || isExtension(attribute.namespaceUri)) {
      checkAttribute(element, i, *known);
    } else if (!suggestedNamespace(attribute.namespaceUri).empty()) {  // else another vocabulary
      report_.add(FindingCode::UNKNOWN_ATTRIBUTE, element, i);
    }
  }
}

void TreeRules::checkAttribute(const XmlNode& element, std::uint32_t index, Attributes known) {
  const XmlNode::Attribute attribute = element.attributeAt(index);
  const auto* const found = std::find_if(known.begin(), known.end(), [&](const auto& row) {
    return row.name == attribute.name && row.isExtension == isExtension(attribute.namespaceUri);
  });
  if (found == known.end()) {
    report_.add(FindingCode::UNKNOWN_ATTRIBUTE, element, index);
  } else if (isNumeric(found->kind)) {
    checkNumber(element, index, found->kind);
  } else if (found->kind != ValueKind::PATH || !isExtension(element.namespaceView())) {
    checkValue(element, index, found->kind);  // paths of the extensions may be addresses
  }
  if (found != known.end() && found->name == "subdomains" &&
      StringUtil::trimmed(element.attributeView("origin")) == "*") {
    report_.add(FindingCode::UNUSED_ATTRIBUTE, element, index);
  }
}

void TreeRules::checkNumber(const XmlNode& element, std::uint32_t index, ValueKind kind,
                            bool onlyIfUsable) {
  const XmlNode::Attribute attribute = element.attributeAt(index);
  const std::string value = StringUtil::squeezeAndTrim(attribute.value);
  const std::string name = displayName(attribute.name, attribute.namespaceUri);
  if (!isWholeNumber(kind, value) && !report_.hasReported(element, name) &&
      !(onlyIfUsable && usedNumber(kind, value) == "0")) {
    report_.add(FindingCode::PARTIAL_NUMBER, element, index);
  }
}

void TreeRules::checkValue(const XmlNode& element, std::uint32_t index, ValueKind kind) {
  const XmlNode::Attribute attribute = element.attributeAt(index);
  const std::string value = StringUtil::squeezeAndTrim(attribute.value);
  // The names of a package tell more about a path than its letters.
  if (report_.hasReported(element, attribute.name) ||
      (isPackaged_ && kind == ValueKind::PATH && value.find('\\') != std::string::npos)) {
    return;
  }
  if (value.empty() && (kind == ValueKind::ENCODING || kind == ValueKind::KEYWORDS)) {
    report_.add(FindingCode::EMPTY_VALUE, element, index);
  } else if (const auto advice = adviceOnValue(kind, value)) {
    report_.add(advice->isUseless ? FindingCode::INVALID_VALUE : FindingCode::SUSPICIOUS_VALUE,
                element, index);
  }
}

void TreeRules::checkUnknown(const XmlNode& element) {
  const std::string_view space = element.namespaceView();
  if (space == config::W3C_WIDGETS_NAMESPACE || space == config::EXTENSION_NAMESPACE) {
    report_.add(
        parentNames(element).empty() ? FindingCode::UNKNOWN_ELEMENT : FindingCode::MISPLACED,
        &element);
  } else if (space.data() == nullptr) {
    report_.add(FindingCode::UNKNOWN_ELEMENT, &element);
  } else {
    Diagnostic& finding =
        report_.add(suggestedNamespace(space).empty() ? FindingCode::FOREIGN_ELEMENT
                                                      : FindingCode::UNKNOWN_ELEMENT,
                    &element);
    finding.attribute = "xmlns";
    finding.value = space;
  }
}

// Documents are at most 256 deep.
void TreeRules::checkText(const XmlNode& element) {
  for (const XmlNode* child = element.firstElementChild(); child != nullptr;
       child = child->nextElementSibling()) {
    if (describe(*child) != nullptr) {
      report_.add(FindingCode::MISPLACED, child);  // its text counts, nothing else
    }
    checkAttributes(*child, std::nullopt);
    checkText(*child);
  }
}

void TreeRules::checkChildren(const XmlNode& element, const ElementDescription& description,
                              const XmlNode* stopped) {
  bool isRead = true;
  for (const XmlNode* child = element.firstElementChild(); child != nullptr;
       child = child->nextElementSibling()) {
    if (!isRead) {
      report_.add(FindingCode::NOT_READ, child).other = stopped;
      continue;
    }
    isRead = child != stopped;
    const ChildDescription* const known = describeChild(description, *child);
    if (known != nullptr) {
      checkElement(*child, known->attributes);
      for (const XmlNode* below = child->firstElementChild(); below != nullptr;
           below = below->nextElementSibling()) {
        checkUnknown(*below);
      }
      if (isRead && !known->keyAttribute.empty()) {
        checkSetting(*child, description, known->keyAttribute);
      }
    } else if (!description.isExtension || description.children.empty()) {
      checkUnknown(*child);
    }
  }
}

void TreeRules::checkSetting(const XmlNode& setting, const ElementDescription& parent,
                             std::string_view keyAttribute) {
  const std::string key = StringUtil::squeezeAndTrim(setting.attributeView(keyAttribute));
  const KeyDescription* const description = describeKey(parent, key);
  if (description == nullptr) {
    return;
  }
  if (description == parent.anyKey && !parent.keys.empty() &&
      (nearestName(key, namesOf(parent.keys), Reach::CERTAIN).isCertain ||
       ownerOfKey(key, parent) != nullptr)) {
    report_.add(FindingCode::SIMILAR_KEY, setting, indexOf(setting, keyAttribute));
  }
  // What is not used, of whichever screen, can be no mistake.
  const std::uint32_t value = indexOf(setting, "value");
  if (value != Diagnostic::NO_INDEX && isNumeric(description->kind) &&
      !report_.hasReported(setting, keyAttribute)) {
    checkNumber(setting, value, description->kind, isDensityVariant(*description, key));
  }
}

}  // namespace orvane::nimbrel::check
