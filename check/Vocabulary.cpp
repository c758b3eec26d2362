#include "check/Vocabulary.h"

#include <algorithm>
#include <iterator>

#include "check/Suggestions.h"
#include "config/Namespaces.h"
#include "util/Ascii.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::check {

using config::ChildDescription;
using config::ElementDescription;
using config::KeyDescription;
using util::XmlNode;

std::string displayName(std::string_view name, bool isExtension) {
  return (isExtension ? "tavlo:" : "") + std::string(name);
}

std::string displayName(std::string_view name, std::string_view namespaceUri) {
  if (namespaceUri == config::XML_NAMESPACE) {
    return "xml:" + std::string(name);
  }
  return displayName(name, namespaceUri == config::EXTENSION_NAMESPACE);
}

std::string displayName(const XmlNode& element) {
  return displayName(element.nameView(), element.namespaceView());
}

bool isExtension(std::string_view namespaceUri) noexcept {
  return namespaceUri == config::EXTENSION_NAMESPACE;
}

const ElementDescription* describe(const XmlNode& element) noexcept {
  for (const ElementDescription* const known : config::elementDescriptions()) {
    if (known->name == element.nameView() && element.namespaceView() == namespaceOf(*known)) {
      return known;
    }
  }
  return nullptr;
}

const ChildDescription* describeChild(const ElementDescription& parent,
                                      const XmlNode& child) noexcept {
  return child.namespaceView() == namespaceOf(parent) ? findName(parent.children, child.nameView())
                                                      : nullptr;
}

const KeyDescription* describeKey(const ElementDescription& element,
                                  std::string_view key) noexcept {
  const auto* const found =
      std::find_if(element.keys.begin(), element.keys.end(), [&](const KeyDescription& known) {
        return known.name == key || isDensityVariant(known, key);
      });
  return found == element.keys.end() ? element.anyKey : found;
}

const KeyDescription* describeSetting(const XmlNode& setting) {
  const XmlNode* const parent = setting.parent();
  const ElementDescription* const element = parent == nullptr ? nullptr : describe(*parent);
  const ChildDescription* const child =
      element == nullptr ? nullptr : describeChild(*element, setting);
  return child == nullptr || child->keyAttribute.empty()
             ? nullptr
             : describeKey(*element, zel::util::StringUtil::squeezeAndTrim(
                                         setting.attributeView(child->keyAttribute)));
}

std::string_view namespaceOf(const config::AttributeDescription& attribute) noexcept {
  return attribute.isExtension ? std::string_view(config::EXTENSION_NAMESPACE) : std::string_view();
}

std::string_view namespaceOf(const ElementDescription& element) noexcept {
  return element.isExtension ? config::EXTENSION_NAMESPACE : config::W3C_WIDGETS_NAMESPACE;
}

std::uint32_t indexOf(const XmlNode& element, std::string_view name,
                      std::string_view namespaceUri) noexcept {
  for (std::uint32_t i = 0; i < element.attributeCount(); ++i) {
    const XmlNode::Attribute attribute = element.attributeAt(i);
    if (attribute.name == name && attribute.namespaceUri == namespaceUri) {
      return i;
    }
  }
  return Diagnostic::NO_INDEX;
}

config::DescriptionList<config::AttributeDescription> attributesOf(
    const XmlNode& element) noexcept {
  const XmlNode* const parent = element.parent();
  if (parent == nullptr) {
    return config::widgetDescription().attributes;
  }
  const ElementDescription* const known = describe(parent->parent() == nullptr ? element : *parent);
  if (known == nullptr || parent->parent() == nullptr) {
    return known == nullptr ? decltype(known->attributes)() : known->attributes;
  }
  const ChildDescription* const child = describeChild(*known, element);
  return child == nullptr ? decltype(child->attributes)() : child->attributes;
}

config::ValueKind kindOfValue(const XmlNode& element, std::string_view attribute) {
  const KeyDescription* const key = attribute == "value" ? describeSetting(element) : nullptr;
  if (key != nullptr) {
    return key->kind;
  }
  if (attribute == "xml:lang") {
    return config::ValueKind::LANGUAGE;
  }
  for (const config::AttributeDescription& known : attributesOf(element)) {
    if (displayName(known.name, known.isExtension) == attribute) {
      return known.kind;
    }
  }
  return config::ValueKind::TEXT;
}

bool isDensityVariant(const KeyDescription& description, std::string_view key) noexcept {
  const std::string_view plain = description.name;
  return description.hasDensityVariants && key.size() > plain.size() &&
         key.substr(0, plain.size()) == plain &&
         std::all_of(key.begin() + plain.size(), key.end(),
                     [](char c) { return util::ascii::isDigit(c) || c == '-'; });
}

std::vector<std::string> namesOf(config::DescriptionList<config::AttributeDescription> attributes) {
  std::vector<std::string> names;
  for (const config::AttributeDescription& known : attributes) {
    names.push_back(displayName(known.name, known.isExtension));
  }
  return names;
}

std::vector<std::string> namesOf(config::DescriptionList<KeyDescription> keys) {
  std::vector<std::string> names;
  for (const KeyDescription& known : keys) {
    names.emplace_back(known.name);
  }
  return names;
}

std::vector<std::string> childNames(const XmlNode* parent) {
  if (parent == nullptr) {
    return {std::string(config::widgetDescription().name)};
  }
  std::vector<std::string> names;
  if (parent->parent() == nullptr) {
    for (const ElementDescription* const known : config::elementDescriptions()) {
      names.push_back(displayName(known->name, known->isExtension));
    }
  } else if (const ElementDescription* const known = describe(*parent)) {
    for (const ChildDescription& child : known->children) {
      names.push_back(displayName(child.name, known->isExtension));
    }
  }
  return names;
}

std::vector<std::string> parentNames(const XmlNode& element) {
  std::vector<std::string> names;
  if (describe(element) != nullptr) {
    names.emplace_back(config::widgetDescription().name);
  }
  for (const ElementDescription* const known : config::elementDescriptions()) {
    if (describeChild(*known, element) != nullptr) {
      names.push_back(displayName(known->name, known->isExtension));
    }
  }
  return names;
}

const ElementDescription* ownerOfKey(std::string_view key, const ElementDescription& other) {
  for (const ElementDescription* const known : config::elementDescriptions()) {
    if (known != &other && findName(known->keys, key) != nullptr) {
      return known;
    }
  }
  return nullptr;
}

std::string suggestedNamespace(std::string_view written) {
  return nearestName(written, {config::W3C_WIDGETS_NAMESPACE, config::EXTENSION_NAMESPACE},
                     Reach::CERTAIN)
      .text;
}

bool isDirection(std::string_view value) noexcept {
  return std::find(std::begin(DIRECTIONS), std::end(DIRECTIONS), value) != std::end(DIRECTIONS);
}

bool isAmong(const std::string_view (&words)[2], std::string_view value) noexcept {
  return value.data() != nullptr && (value == words[0] || value == words[1]);
}

}  // namespace orvane::nimbrel::check
