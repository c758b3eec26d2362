#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/BasicConfig.h"
#include "config/ConfigRules.h"
#include "config/ElementDescription.h"
#include "config/ElementReader.h"
#include "config/KeyIndex.h"
#include "util/IDNConverter.h"
#include "util/IRI.h"
#include "util/IRIParser.h"

// The elements of a document and what their handlers have in common. Each element is defined in the
// file of its name.
namespace orvane::nimbrel::config::detail {

using Node = std::shared_ptr<util::XmlNode>;

/// What a handler works with: the services of its parser, the record that it fills, and what the
/// parser keeps from element to element.
struct HandlerContext {
  const util::IRIParser& iriParser;
  const util::IDNConverter& idnConverter;
  const ConfigRules& rules;
  BasicConfig& record;
  ParseObserver* observer;         ///< may be null
  util::Option<util::IRI>& idIri;  ///< receives what `iriParser` reads
  bool& contentSeen;               ///< whether any document had a "content" element
  std::string& errorText;          ///< the last element-level problem
  KeyIndex<Config::Icon> icons{record.icons()};
  KeyIndex<Config::Preference> preferences{record.preferences()};

  [[nodiscard]] ElementReader readerOf(const util::XmlNode& element) const noexcept {
    return {element, observer};
  }
  /// An attribute that is an IRI. None when it is absent or, which is reported, no IRI.
  [[nodiscard]] util::Option<std::string> readIri(const ElementReader& reader,
                                                  const AttributeDescription& attribute) const;
};

/// Reads an element of the name, which is not null. False when it was ignored or not read to its
/// end.
using Handler = bool (*)(HandlerContext& context, const Node& node);

/// What an element may contain, and how it is read.
struct KnownElement {
  ElementDescription description;
  Handler handle;
};

extern const KnownElement WIDGET;  // the root; the others are its children
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

/// The element of a node's name and namespace, below the root; null when there is none.
[[nodiscard]] const KnownElement* findKnownElement(const util::XmlNode& node) noexcept;

/// Joins the locales of a record: the default one of its document when it is new, then "*".
void completeLocales(BasicConfig& record, const util::Option<std::string>& defaultLocale);
/// Fills the view modes of a record; those that are repeated are reported on its root.
void readViewModes(const HandlerContext& context, const util::Option<std::string>& viewModes);

/// Appends to a list, which begins with room for a few entries: most documents have no more.
template <typename Entry>
void append(std::vector<Entry>& list, Entry entry) {
  if (list.empty()) {
    list.reserve(4);
  }
  list.push_back(std::move(entry));
}

/// @name Descriptions
/// @{
inline constexpr std::string_view NO_MEMBER = {};  ///< fields are members of the record
inline constexpr std::string_view NO_TEXT = {};    ///< the text of the element is not read
inline constexpr DescriptionList<AttributeDescription> NO_ATTRIBUTES = {};
inline constexpr DescriptionList<KeyDescription> NO_KEYS = {};

/// An attribute without which its element is ignored.
constexpr AttributeDescription neededAttribute(std::string_view name, ValueKind kind,
                                               std::string_view field = {}) noexcept {
  return {name, kind, true, field};
}
constexpr AttributeDescription optionalAttribute(std::string_view name, ValueKind kind,
                                                 std::string_view field = {}) noexcept {
  return {name, kind, false, field};
}

/// An element of the W3C. Where it is unique, then by its first attribute.
constexpr KnownElement w3cElement(std::string_view name, Repetition repetition, Handler handle,
                                  std::string_view member,
                                  DescriptionList<AttributeDescription> attributes,
                                  std::string_view textField = NO_TEXT,
                                  DescriptionList<ChildDescription> children = {}) noexcept {
  const std::string_view unique =
      repetition == Repetition::UNIQUE_BY ? attributes[0].name : std::string_view();
  return {{name, false, repetition, unique, member, attributes, textField, children}, handle};
}
/// An element whose settings are children.
constexpr KnownElement extensionElement(std::string_view name, Repetition repetition,
                                        Handler handle, std::string_view member,
                                        DescriptionList<ChildDescription> children,
                                        DescriptionList<KeyDescription> keys,
                                        const KeyDescription* anyKey = nullptr) noexcept {
  return {{name, true, repetition, {}, member, NO_ATTRIBUTES, NO_TEXT, children, keys, anyKey},
          handle};
}
/// @}

}  // namespace orvane::nimbrel::config::detail
