#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "check/Diagnostic.h"
#include "config/ElementDescription.h"
#include "util/XmlNode.h"

// Questions to the descriptions of the elements.
namespace orvane::nimbrel::check {

/// A name as findings spell it: with the prefix "tavlo:" in the extension namespace, whatever the
/// prefix in the document.
[[nodiscard]] std::string displayName(std::string_view name, std::string_view namespaceUri);
/// @overload
[[nodiscard]] std::string displayName(std::string_view name, bool isExtension);
/// The name of an element in this spelling.
[[nodiscard]] std::string displayName(const util::XmlNode& element);

/// Whether a namespace is that of the extensions.
[[nodiscard]] bool isExtension(std::string_view namespaceUri) noexcept;

/// The description of a child of the root; null for one that is not known.
[[nodiscard]] const config::ElementDescription* describe(const util::XmlNode& element) noexcept;

/// The description of a child of an element; null for one that may not stand there.
[[nodiscard]] const config::ChildDescription* describeChild(
    const config::ElementDescription& parent, const util::XmlNode& child) noexcept;

/// How an element reads a key; null for one that means nothing.
[[nodiscard]] const config::KeyDescription* describeKey(const config::ElementDescription& element,
                                                        std::string_view key) noexcept;

/// How a setting, a child of an extension element, is read; null for one that means nothing.
[[nodiscard]] const config::KeyDescription* describeSetting(const util::XmlNode& setting);

/// The namespace of an attribute; null data for none.
[[nodiscard]] std::string_view namespaceOf(const config::AttributeDescription& attribute) noexcept;
/// The namespace of an element and its children.
[[nodiscard]] std::string_view namespaceOf(const config::ElementDescription& element) noexcept;

/// The place of an attribute among those of an element; `Diagnostic::NO_INDEX` for an absent one.
[[nodiscard]] std::uint32_t indexOf(const util::XmlNode& element, std::string_view name,
                                    std::string_view namespaceUri = {}) noexcept;

/// The attributes that an element may have; none for one that is not known.
[[nodiscard]] config::DescriptionList<config::AttributeDescription> attributesOf(
    const util::XmlNode& element) noexcept;

/// How the value of an attribute is read, of the value of a setting by its key.
[[nodiscard]] config::ValueKind kindOfValue(const util::XmlNode& element,
                                            std::string_view attribute);

/// Whether a key is one with the density of a screen at its end.
[[nodiscard]] bool isDensityVariant(const config::KeyDescription& description,
                                    std::string_view key) noexcept;

/// The description of a name in a list; null when there is none.
template <typename T>
const T* findName(config::DescriptionList<T> list, std::string_view name) noexcept {
  const auto* const found =
      std::find_if(list.begin(), list.end(), [&](const T& known) { return known.name == name; });
  return found == list.end() ? nullptr : found;
}

/// The names of some attributes as findings spell them, or of some keys.
[[nodiscard]] std::vector<std::string> namesOf(
    config::DescriptionList<config::AttributeDescription> attributes);
/// @overload
[[nodiscard]] std::vector<std::string> namesOf(
    config::DescriptionList<config::KeyDescription> keys);

/// The elements that may stand in another one, as findings spell them; "widget" for null.
[[nodiscard]] std::vector<std::string> childNames(const util::XmlNode* parent);

/// Another element that has a key; null when there is none.
[[nodiscard]] const config::ElementDescription* ownerOfKey(std::string_view key,
                                                           const config::ElementDescription& other);

/// The one of our namespaces that another one was meant to be; empty when that is not certain.
[[nodiscard]] std::string suggestedNamespace(std::string_view written);

/// The elements, as findings spell them, in which one with this name and namespace may stand.
[[nodiscard]] std::vector<std::string> parentNames(const util::XmlNode& element);

/// The values of "dir".
inline constexpr std::string_view DIRECTIONS[] = {"ltr", "rtl", "lro", "rlo"};

/// Whether a value is one of `DIRECTIONS`.
[[nodiscard]] bool isDirection(std::string_view value) noexcept;

/// Whether a value is one of two words.
[[nodiscard]] bool isAmong(const std::string_view (&words)[2], std::string_view value) noexcept;

}  // namespace orvane::nimbrel::check
