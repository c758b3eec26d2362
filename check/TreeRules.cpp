#include "check/TreeRules.h"

#include <algorithm>
#include <string>

#include "check/NearestName.h"
#include "check/ValueAdvice.h"
#include "check/Vocabulary.h"
#include "config/Namespaces.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::check {

using config::AttributeDescription;
using config::ChildDescription;
using config::ElementDescription;
using config::KeyDescription;
using config::ValueKind;
using util::XmlNode;
using zel::util::StringUtil;

void TreeRules::addNamespace(FindingCode code, const XmlNode& element) {
  Diagnostic& finding = report_.add(code, &element);
  finding.attribute = "xmlns";
  finding.value = element.namespaceView();
}

void TreeRules::checkRoot(const XmlNode& root) {
  checkAttributes(root, config::widgetDescription().attributes);
  checkLanguage(root);
  checkStrayText(root);
}

void TreeRules::checkChild(const XmlNode& element, const XmlNode* stopped) {
  if (const ElementDescription* const description = describe(element)) {
    checkAttributes(element, description->attributes);
    checkLanguage(element);
    if (description->textField.data() == nullptr) {
      checkStrayText(element);
    }
    if (description->isExtension) {
      checkSettings(element, *description, stopped);
    } else if (description->textField.data() != nullptr) {
      checkText(element);
    } else {
      checkChildren(element, *description);
    }
    checkOrigin(element, description->attributes);
  } else {
    checkUnknown(element);
  }
}

void TreeRules::checkAttributes(const XmlNode& element, Attributes known) {
  for (std::uint32_t i = 0; i < element.attributeCount(); ++i) {
    const XmlNode::Attribute attribute = element.attributeAt(i);
    const bool isPlain = attribute.namespaceUri.data() == nullptr;
    const bool isExtensionAttribute = attribute.namespaceUri == config::EXTENSION_NAMESPACE;
    if (!isPlain && !isExtensionAttribute) {
      if (!suggestedNamespace(attribute.namespaceUri).empty()) {
        report_.add(FindingCode::UNKNOWN_ATTRIBUTE, element, i);
      }
      continue;  // of another vocabulary
    }
    if (isPlain && attribute.name == "dir") {
      if (!isDirection(attribute.value)) {
        report_.add(FindingCode::UNKNOWN_WORD, element, i);
      }
      continue;
    }
    const auto found =
        std::find_if(known.begin(), known.end(), [&](const AttributeDescription& description) {
          return description.name == attribute.name &&
                 description.isExtension == isExtensionAttribute;
        });
    if (found == known.end()) {
      report_.add(FindingCode::UNKNOWN_ATTRIBUTE, element, i);
    } else if (isNumeric(found->kind)) {
      checkNumber(element, i, found->kind);
    } else if (found->kind != ValueKind::PATH || !isExtension(element)) {
      checkValue(element, i, found->kind);  // paths of the extensions may be addresses
    }
  }
}

void TreeRules::checkNumber(const XmlNode& element, std::uint32_t index, ValueKind kind,
                            bool onlyIfUsable) {
  const XmlNode::Attribute attribute = element.attributeAt(index);
  const std::string value = StringUtil::squeezeAndTrim(attribute.value);
  const std::string name = displayName(attribute.name, attribute.namespaceUri);
  if (!isWholeNumber(kind, value) && !probe_.hasReported(element, name) &&
      !(onlyIfUsable && usedNumber(kind, value) == "0")) {
    report_.add(FindingCode::PARTIAL_NUMBER, element, index);
  }
}

void TreeRules::checkValue(const XmlNode& element, std::uint32_t index, ValueKind kind) {
  const XmlNode::Attribute attribute = element.attributeAt(index);
  const std::string value = StringUtil::squeezeAndTrim(attribute.value);
  // The names of a package tell more about a path than its letters.
  if (probe_.hasReported(element, attribute.name) ||
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

void TreeRules::checkLanguage(const XmlNode& element) {
  for (std::uint32_t i = 0; i < element.attributeCount(); ++i) {
    const XmlNode::Attribute attribute = element.attributeAt(i);
    if (attribute.namespaceUri != config::XML_NAMESPACE) {
      continue;
    }
    NearestName language(attribute.name);
    language.consider("lang");
    if (attribute.name != "lang" && !language.get().empty()) {
      report_.add(FindingCode::UNKNOWN_ATTRIBUTE, element, i);
    } else if (attribute.name == "lang") {
      checkValue(element, i, ValueKind::LANGUAGE);
    }
  }
}

void TreeRules::checkStrayText(const XmlNode& element) {
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

void TreeRules::checkOrigin(const XmlNode& access, Attributes known) {
  const auto origin = std::find_if(known.begin(), known.end(), [](const auto& description) {
    return description.kind == ValueKind::ORIGIN;
  });
  if (origin == known.end() || StringUtil::trimmed(access.attributeView(origin->name)) != "*") {
    return;
  }
  const std::uint32_t subdomains = indexOf(access, "subdomains");
  if (subdomains != Diagnostic::NO_INDEX) {
    report_.add(FindingCode::UNUSED_ATTRIBUTE, access, subdomains);
  }
}

void TreeRules::checkUnknown(const XmlNode& element) {
  const std::string_view space = element.namespaceView();
  if (space == config::W3C_WIDGETS_NAMESPACE || space == config::EXTENSION_NAMESPACE) {
    report_.add(isKnownSomewhere(element) ? FindingCode::MISPLACED : FindingCode::UNKNOWN_ELEMENT,
                &element);
  } else if (space.data() == nullptr) {
    report_.add(FindingCode::UNKNOWN_ELEMENT, &element);
  } else {
    addNamespace(suggestedNamespace(space).empty() ? FindingCode::FOREIGN_ELEMENT
                                                   : FindingCode::UNKNOWN_ELEMENT,
                 element);
  }
}

// Others than these are for programs that know the elements.
void TreeRules::checkTextAttributes(const XmlNode& element) {
  for (std::uint32_t i = 0; i < element.attributeCount(); ++i) {
    const XmlNode::Attribute attribute = element.attributeAt(i);
    if (attribute.namespaceUri.data() != nullptr) {
      continue;
    }
    NearestName direction(attribute.name);
    direction.consider("dir");
    if (attribute.name == "dir" ? !isDirection(attribute.value)
                                : isDirection(attribute.value) && !direction.get().empty()) {
      report_.add(
          attribute.name == "dir" ? FindingCode::UNKNOWN_WORD : FindingCode::UNKNOWN_ATTRIBUTE,
          element, i);
    }
  }
}

// Documents are at most 256 deep.
void TreeRules::checkText(const XmlNode& element) {
  for (const XmlNode* child = element.firstElementChild(); child != nullptr;
       child = child->nextElementSibling()) {
    if (describe(*child) != nullptr) {
      report_.add(FindingCode::MISPLACED, child);  // its text counts, nothing else
    }
    checkTextAttributes(*child);
    checkLanguage(*child);
    checkText(*child);
  }
}

void TreeRules::checkChildren(const XmlNode& element, const ElementDescription& description) {
  for (const XmlNode* child = element.firstElementChild(); child != nullptr;
       child = child->nextElementSibling()) {
    if (const ChildDescription* const known = describeChild(description, *child)) {
      checkLeaf(*child, known->attributes);
    } else {
      checkUnknown(*child);
    }
  }
}

void TreeRules::checkLeaf(const XmlNode& element, Attributes known) {
  checkAttributes(element, known);
  checkLanguage(element);
  checkStrayText(element);
  for (const XmlNode* child = element.firstElementChild(); child != nullptr;
       child = child->nextElementSibling()) {
    checkUnknown(*child);
  }
}

void TreeRules::checkSettings(const XmlNode& element, const ElementDescription& description,
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
      checkLeaf(*child, known->attributes);
      if (isRead && !known->keyAttribute.empty()) {
        checkSetting(*child, description, known->keyAttribute);
      }
    } else if (description.children.empty()) {
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
      (!suggestedKey(parent, key).empty() || ownerOfKey(key, parent) != nullptr)) {
    report_.add(FindingCode::SIMILAR_KEY, setting, indexOf(setting, keyAttribute));
  }
  // What is not used, of whichever screen, can be no mistake.
  const std::uint32_t value = indexOf(setting, "value");
  if (value != Diagnostic::NO_INDEX && isNumeric(description->kind) &&
      !probe_.hasReported(setting, keyAttribute)) {
    checkNumber(setting, value, description->kind, isDensityVariant(*description, key));
  }
}

}  // namespace orvane::nimbrel::check
