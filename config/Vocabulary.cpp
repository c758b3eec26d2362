#include "config/Vocabulary.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "config/Namespaces.h"
#include "config/RuleReaders.h"
#include "config/Suggestion.h"

namespace orvane::nimbrel::config::detail {
namespace {

using util::XmlNode;

constexpr std::size_t MAX_ATTRIBUTES = 6;

// Empty names fill the rows up. Those of the root and of its children come first.
constexpr struct Known {
  std::string_view element;
  bool isExtension;
  bool isChildOfRoot;
  std::string_view attributes[MAX_ATTRIBUTES];
} VOCABULARY[] = {
    {"widget", false, false, {"id", "version", "width", "height", "viewmodes", "defaultlocale"}},
    {"name", false, true, {"short"}},
    {"description", false, true, {}},
    {"license", false, true, {"href"}},
    {"author", false, true, {"href", "email"}},
    {"content", false, true, {"src", "encoding", "type"}},
    {"icon", false, true, {"src", "width", "height"}},
    {"preference", false, true, {"name", "value", "readonly"}},
    {"feature", false, true, {"name", "required"}},
    {"param", false, false, {"name", "value"}},
    {"access", false, true, {"origin", "subdomains"}},
    {"cookiejar", true, true, {}},
    {"auth", true, true, {}},
    {"network", true, true, {}},
    {"gestures", true, true, {}},
    {"permissions", true, true, {}},
    {"chrome", true, true, {}},
    {"settings", true, true, {}},
    {"messaging", true, true, {}},
    {"resources", true, true, {}},
    {"export", true, true, {"resource"}},
    {"asset", true, false, {"key", "value"}},
    {"errorPage", true, false, {"src"}},
    {"param", true, false, {"name", "value", "properties"}},
    {"permission", true, false, {"name", "value"}},
    {"setting", true, false, {"name", "value"}},
    {"app", true, false, {"name", "value"}},
};
constexpr std::string_view ROOT_EXTENSION_ATTRIBUTES[] = {"applicationId", "applicationVersion"};

const char* namespaceOf(const Known& known) noexcept {
  return known.isExtension ? EXTENSION_NAMESPACE : W3C_WIDGETS_NAMESPACE;
}

const Known* findKnown(const XmlNode& element) noexcept {
  for (const Known& known : VOCABULARY) {
    if (known.element == element.nameView() && namespaceOf(known) == element.namespaceView()) {
      return &known;
    }
  }
  return nullptr;
}

template <typename List>
bool contains(const List& list, std::string_view name) noexcept {
  return std::find(std::begin(list), std::end(list), name) != std::end(list);
}

void examineAttribute(const XmlNode::Attribute& attribute, const Known& known,
                      const Report& report) {
  const bool hasNone = attribute.namespaceUri.data() == nullptr;
  if (!hasNone && attribute.namespaceUri != EXTENSION_NAMESPACE) {
    return;  // somebody else's
  }
  const bool isRoot = &known == &VOCABULARY[0];
  if (hasNone && attribute.name == "dir") {
    if (!readDirection(attribute.value)) {
      report(LegacyCode::UNKNOWN_DIRECTION, "dir", attribute.value,
             "It is no direction and counts as absent.", suggestedDirection(attribute.value));
    }
    return;
  }
  if (hasNone ? contains(known.attributes, attribute.name)
              : isRoot && contains(ROOT_EXTENSION_ATTRIBUTES, attribute.name)) {
    return;
  }
  Suggestion suggestion(attribute.name);
  for (const std::string_view name : known.attributes) {
    if (!name.empty()) {
      suggestion.consider(name);
    }
  }
  std::string meant(suggestion.get());
  if (meant.empty() && isRoot) {
    Suggestion extension(attribute.name);
    for (const std::string_view name : ROOT_EXTENSION_ATTRIBUTES) {
      extension.consider(name);
    }
    if (!extension.get().empty()) {
      meant = findingName(extension.get(), EXTENSION_NAMESPACE);
    }
  }
  report(LegacyCode::UNKNOWN_ATTRIBUTE, findingName(attribute.name, attribute.namespaceUri),
         attribute.value, "Nothing reads this attribute.", meant);
}

/// Documents are at most 256 deep.
void examineBelow(const XmlNode& element, Observation& observation) {
  for (const XmlNode* child = element.firstElementChild(); child != nullptr;
       child = child->nextElementSibling()) {
    const std::string_view direction = child->attributeView("dir");
    if (direction.data() != nullptr && !readDirection(direction)) {
      Report(&observation, child)(LegacyCode::UNKNOWN_DIRECTION, "dir", direction,
                                  "It is no direction: that of the element around it applies.");
    }
    examineBelow(*child, observation);
  }
}

}  // namespace

void examineAttributes(const XmlNode& element, Observation& observation) {
  const Known* const known = findKnown(element);
  if (known == nullptr) {
    return;
  }
  const Report report(&observation, &element);
  for (std::size_t i = 0; i < element.attributeCount(); ++i) {
    examineAttribute(element.attributeAt(i), *known, report);
  }
  for (const std::string_view ofText : {"name", "description", "license", "author"}) {
    if (known->element == ofText) {
      examineBelow(element, observation);
    }
  }
}

void reportUnknownElement(const XmlNode& element, Observation& observation) {
  const Report report(&observation, &element);
  const std::string_view space = element.namespaceView();
  const bool isOurs = space == W3C_WIDGETS_NAMESPACE || space == EXTENSION_NAMESPACE;
  // A name of the other vocabulary, or one that is spelt almost like a name of either.
  Suggestion suggestion(element.nameView());
  const Known* found = nullptr;
  for (const Known& known : VOCABULARY) {
    if (known.isChildOfRoot) {
      suggestion.consider(known.element);
    }
  }
  for (const Known& known : VOCABULARY) {
    if (known.isChildOfRoot && known.element == suggestion.get()) {
      found = &known;
    }
  }
  const std::string meant =
      found == nullptr ? "" : findingName(found->element, namespaceOf(*found));
  if (isOurs) {
    report(LegacyCode::UNKNOWN_ELEMENT, "No element of this name is known here.", meant);
    return;
  }
  Suggestion spaces(space);
  spaces.consider(W3C_WIDGETS_NAMESPACE);
  spaces.consider(EXTENSION_NAMESPACE);
  if (!spaces.get().empty()) {
    report(LegacyCode::UNKNOWN_ELEMENT, "xmlns", space, "The namespace is not a known one.",
           spaces.get());
  } else if (space.data() == nullptr) {
    report(LegacyCode::UNKNOWN_ELEMENT, "The element is in no namespace.", meant);
  } else {
    report(LegacyCode::FOREIGN_ELEMENT, "xmlns", space,
           "An element of another vocabulary is kept for those who know it.");
  }
}

void reportForeignRoot(const XmlNode* root, Observation& observation) {
  if (root == nullptr) {
    return observation.tell(
        {LegacyCode::ROOT_NOT_WIDGET, {}, {}, 0, 0, {}, "The document has no root.", {}});
  }
  const Report report(&observation, root);
  if (root->nameView() != "widget") {
    return report(LegacyCode::ROOT_NOT_WIDGET, "The root is to be a widget.", "widget");
  }
  report(LegacyCode::ROOT_NOT_WIDGET, "xmlns", root->namespaceView(),
         "The root has to be in the namespace of widgets.", W3C_WIDGETS_NAMESPACE);
}

}  // namespace orvane::nimbrel::config::detail
