// The list of the elements below the root: an element has a line here and one in the table.

#include <array>
#include <iterator>
#include <string_view>

#include "config/handlers/KnownElement.h"

namespace orvane::nimbrel::config {
namespace detail {

extern const KnownElement NAME;
extern const KnownElement DESCRIPTION;
extern const KnownElement LICENSE;
extern const KnownElement ICON;
extern const KnownElement AUTHOR;
extern const KnownElement PREFERENCE;
extern const KnownElement CONTENT;
extern const KnownElement FEATURE;
extern const KnownElement ACCESS;
extern const KnownElement COOKIE_JAR;
extern const KnownElement AUTH;
extern const KnownElement NETWORK;
extern const KnownElement GESTURES;
extern const KnownElement PERMISSIONS;
extern const KnownElement CHROME;
extern const KnownElement SETTINGS;
extern const KnownElement MESSAGING;
extern const KnownElement RESOURCES;
extern const KnownElement EXPORT;

namespace {

// In the order in which they are tried.
constexpr const KnownElement* ELEMENTS[] = {
    &NAME,         //
    &DESCRIPTION,  //
    &LICENSE,      //
    &ICON,         //
    &AUTHOR,       //
    &PREFERENCE,   //
    &CONTENT,      //
    &FEATURE,      //
    &ACCESS,       //
    &COOKIE_JAR,   //
    &AUTH,         //
    &NETWORK,      //
    &GESTURES,     //
    &PERMISSIONS,  //
    &CHROME,       //
    &SETTINGS,     //
    &MESSAGING,    //
    &RESOURCES,    //
    &EXPORT,       //
};

constexpr auto descriptionsOf() noexcept {
  std::array<const ElementDescription*, std::size(ELEMENTS)> descriptions{};
  for (std::size_t i = 0; i < std::size(ELEMENTS); ++i) {
    descriptions[i] = &ELEMENTS[i]->description;
  }
  return descriptions;
}
constexpr auto DESCRIPTIONS = descriptionsOf();

}  // namespace

const KnownElement* findKnownElement(const util::XmlNode& node) noexcept {
  const std::string_view space = node.namespaceView();
  const bool isExtension = space == EXTENSION;
  if (!isExtension && space != W3C_WIDGETS_NAMESPACE) {
    return nullptr;
  }
  const std::string_view name = node.nameView();
  for (const KnownElement* const element : ELEMENTS) {
    if (element->description.isExtension == isExtension && element->description.name == name) {
      return element;
    }
  }
  return nullptr;
}

}  // namespace detail

DescriptionList<const ElementDescription*> elementDescriptions() noexcept {
  return {detail::DESCRIPTIONS.data(), detail::DESCRIPTIONS.size()};
}

}  // namespace orvane::nimbrel::config
