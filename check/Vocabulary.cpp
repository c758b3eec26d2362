#include "check/Vocabulary.h"

#include <algorithm>
#include <iterator>

#include "config/Namespaces.h"
#include "util/Ascii.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::check {

using config::ChildDescription;
using config::ElementDescription;
using config::KeyDescription;
using util::XmlNode;

std::string displayName(std::string_view name, bool isExtension) {
  std::string result = isExtension ? "tavlo:" : "";
  result += name;
  return result;
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

bool isExtension(const XmlNode& element) noexcept {
  return isExtension(element.namespaceView());
}

const ElementDescription* describe(const XmlNode& element) noexcept {
  const bool extension = isExtension(element);
  if (!extension && element.namespaceView() != config::W3C_WIDGETS_NAMESPACE) {
    return nullptr;
  }
  for (const ElementDescription* const known : config::elementDescriptions()) {
    if (known->isExtension == extension && known->name == element.nameView()) {
      return known;
    }
  }
  return nullptr;
}

const ChildDescription* describeChild(const ElementDescription& parent,
                                      const XmlNode& child) noexcept {
  if (child.namespaceView() !=
      (parent.isExtension ? config::EXTENSION_NAMESPACE : config::W3C_WIDGETS_NAMESPACE)) {
    return nullptr;
  }
  for (const ChildDescription& known : parent.children) {
    if (known.name == child.nameView()) {
      return &known;
    }
  }
  return nullptr;
}

const KeyDescription* describeKey(const ElementDescription& element,
                                  std::string_view key) noexcept {
  for (const KeyDescription& known : element.keys) {
    if (known.name == key || isDensityVariant(known, key)) {
      return &known;
    }
  }
  return element.anyKey;
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

std::uint32_t indexOf(const XmlNode& element, std::string_view name,
                      std::string_view namespaceUri) noexcept {
  std::uint32_t index = 0;
  while (index < element.attributeCount() &&
         (element.attributeAt(index).name != name ||
          element.attributeAt(index).namespaceUri != namespaceUri)) {
    ++index;
  }
  return index < element.attributeCount() ? index : Diagnostic::NO_INDEX;
}

config::DescriptionList<config::AttributeDescription> attributesOf(
    const XmlNode& element) noexcept {
  const XmlNode* const parent = element.parent();
  if (parent == nullptr) {
    return config::widgetDescription().attributes;
  }
  if (parent->parent() == nullptr) {
    const ElementDescription* const known = describe(element);
    return known == nullptr ? decltype(known->attributes)() : known->attributes;
  }
  const ElementDescription* const around = describe(*parent);
  const ChildDescription* const known =
      around == nullptr ? nullptr : describeChild(*around, element);
  return known == nullptr ? decltype(known->attributes)() : known->attributes;
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

std::string_view suggestedKey(const ElementDescription& element, std::string_view key,
                              Reach reach) {
  NearestName suggestion(key, reach);
  for (const KeyDescription& known : element.keys) {
    suggestion.consider(known.name);
  }
  return suggestion.get();
}

const ElementDescription* ownerOfKey(std::string_view key, const ElementDescription& other) {
  for (const ElementDescription* const known : config::elementDescriptions()) {
    for (const KeyDescription& row : known->keys) {
      if (known != &other && row.name == key) {
        return known;
      }
    }
  }
  return nullptr;
}

std::string_view suggestedNamespace(std::string_view written) {
  NearestName suggestion(written);
  suggestion.consider(config::W3C_WIDGETS_NAMESPACE);
  suggestion.consider(config::EXTENSION_NAMESPACE);
  return suggestion.get();
}

bool isKnownSomewhere(const XmlNode& element) noexcept {
  if (describe(element) != nullptr) {
    return true;
  }
  const auto known = config::elementDescriptions();
  return std::any_of(known.begin(), known.end(), [&](const ElementDescription* parent) {
    return describeChild(*parent, element) != nullptr;
  });
}

bool isDirection(std::string_view value) noexcept {
  return std::find(std::begin(DIRECTIONS), std::end(DIRECTIONS), value) != std::end(DIRECTIONS);
}

bool isAmong(const std::string_view (&words)[2], std::string_view value) noexcept {
  return value.data() != nullptr && (value == words[0] || value == words[1]);
}

}  // namespace orvane::nimbrel::check
