#include "config/handlers/Elements.h"

#include <array>
#include <iterator>

#include "config/Namespaces.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

// In the order in which they are tried.
constexpr const KnownElement* ELEMENTS[] = {
    &NAME,    &DESCRIPTION, &LICENSE,    &ICON,      &AUTHOR,  &PREFERENCE, &CONTENT,
    &FEATURE, &ACCESS,      &COOKIE_JAR, &AUTH,      &NETWORK, &GESTURES,   &PERMISSIONS,
    &CHROME,  &SETTINGS,    &MESSAGING,  &RESOURCES, &EXPORT};

constexpr auto descriptionsOf() noexcept {
  std::array<const ElementDescription*, std::size(ELEMENTS)> descriptions{};
  for (std::size_t i = 0; i < std::size(ELEMENTS); ++i) {
    descriptions[i] = &ELEMENTS[i]->description;
  }
  return descriptions;
}
constexpr auto DESCRIPTIONS = descriptionsOf();

}  // namespace

util::Option<std::string> HandlerContext::readIri(const ElementReader& reader,
                                                  const AttributeDescription& attribute) const {
  util::Option<std::string> value = reader.text(attribute);
  if (value && !iriParser.tryParse(value.c_str(), idIri)) {
    reader.report(FindingCode::NOT_AN_IRI, attribute, value);
    value.reset();
  }
  return value;
}

const KnownElement* findKnownElement(const util::XmlNode& node) noexcept {
  const std::string_view space = node.namespaceView();
  const bool isExtension = space != W3C_WIDGETS_NAMESPACE;
  if (isExtension && space != extensionNamespace()) {
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

const ElementDescription& widgetDescription() noexcept {
  return detail::WIDGET.description;
}

DescriptionList<const ElementDescription*> elementDescriptions() noexcept {
  return {detail::DESCRIPTIONS.data(), detail::DESCRIPTIONS.size()};
}

}  // namespace orvane::nimbrel::config
