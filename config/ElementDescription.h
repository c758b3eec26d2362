#pragma once

#include <cstddef>
#include <string_view>

#include "config/Api.h"

// The descriptions by which the parser reads a document. Programs that explain, complete or
// document configuration documents use them as well. They are constant and live as long as the
// library; any thread may read them.
namespace orvane::nimbrel::config {

/// A constant array, seen with its size.
template <typename T>
class DescriptionList {
 public:
  constexpr DescriptionList() noexcept = default;
  /// `size` entries from `first` on.
  constexpr DescriptionList(const T* first, std::size_t size) noexcept
      : first_(first), size_(size) {}
  /// The whole of an array.
  template <std::size_t SIZE>
  // NOLINTNEXTLINE(google-explicit-constructor): so that tables name their arrays only
  constexpr DescriptionList(const T (&array)[SIZE]) noexcept : first_(array), size_(SIZE) {}

  /// @{
  /// As a standard container's. Never throws; the index of `operator[]` is below `size()`.
  [[nodiscard]] constexpr const T* begin() const noexcept { return first_; }
  [[nodiscard]] constexpr const T* end() const noexcept { return first_ + size_; }
  [[nodiscard]] constexpr std::size_t size() const noexcept { return size_; }
  [[nodiscard]] constexpr bool empty() const noexcept { return size_ == 0; }
  [[nodiscard]] constexpr const T& operator[](std::size_t i) const noexcept { return first_[i]; }
  /// @}

 private:
  const T* first_ = nullptr;
  std::size_t size_ = 0;
};

/// How a value is read.
enum class ValueKind {
  TEXT,            ///< anything
  PATH,            ///< a path as written
  IRI,             ///< an absolute IRI (RFC 3987)
  ORIGIN,          ///< "*", or scheme, host and port of an IRI
  NUMBER,          ///< unsigned, 32 bits
  SIZE,            ///< the same, not 0
  INTEGER,         ///< signed, 32 bits
  DECIMAL,         ///< with an optional fraction and exponent
  BOOLEAN,         ///< "true" or "false"
  SWITCH,          ///< one of the `SwitchWords` of the row
  KEYWORDS,        ///< words separated by white space
  LANGUAGE,        ///< a language tag
  DIRECTION,       ///< "ltr", "rtl", "lro" or "rlo"
  APPLICATION_ID,  ///< 1 to 32 lower-case ASCII letters and digits
  MEDIA_TYPE,      ///< a media type, not validated
  ENCODING         ///< a name of an encoding, not validated
};

/// The words of a switch. Where there is one word only, it stands twice.
struct SwitchWords {
  std::string_view trigger[2];   ///< either has the effect
  std::string_view opposite[2];  ///< known to have no effect; any other word is a mistake
};

/// What the value of a key does to what an earlier one left.
enum class KeyRule {
  ACCUMULATES,  ///< joins a list
  LAST_COUNTS,  ///< replaces it
  ONLY_RAISED   ///< the trigger word moves a flag from its default, nothing moves it back
};

/// An attribute of an element.
struct AttributeDescription {
  std::string_view name;    ///< local name
  ValueKind kind;           ///< how its value is read
  bool isRequired = false;  ///< whether the element is ignored without it
  /// What it fills of the `member` of its element, such as "href"; "[]" stands for an entry of a
  /// list, "*" for any name. Empty when it fills nothing by itself.
  std::string_view field = {};
  bool isExtension = false;  ///< in the extension namespace, else in none
};

/// A setting that an extension element knows by its key.
struct KeyDescription {
  std::string_view name;   ///< empty in the row that stands for any key
  ValueKind kind;          ///< how the value is read; a NUMBER that is none ends the parse
  KeyRule rule;            ///< what becomes of repeated keys
  std::string_view field;  ///< as that of an attribute
  const SwitchWords* words = nullptr;  ///< held by a SWITCH
  bool hasDensityVariants = false;     ///< also with the density of a screen at its end
};

/// An element that may stand in another one.
struct ChildDescription {
  std::string_view name;                             ///< local name, in the namespace of its parent
  DescriptionList<AttributeDescription> attributes;  ///< those that are read
  /// The attribute that names the setting, such as "key"; empty when the child is no setting. It is
  /// the first of the attributes of a setting, and its value is the second.
  std::string_view keyAttribute = {};
};

/// What becomes of several elements of one name.
enum class Repetition {
  FIRST_COUNTS,  ///< of all that the user's languages let through
  UNIQUE_BY,     ///< the first of each value of `uniqueAttribute` counts
  RESTARTS,      ///< each starts from the defaults
  ADDS           ///< each adds to what there is
};

/// An element below the root.
struct ElementDescription {
  std::string_view name;     ///< local name
  bool isExtension = false;  ///< in the extension namespace, else in that of W3C Widgets
  Repetition repetition = Repetition::ADDS;  ///< what becomes of several
  std::string_view uniqueAttribute = {};     ///< held by UNIQUE_BY
  /// The member of the record that holds what it fills, such as "license", or "icons[]" for an
  /// entry of a list; empty when the fields are members of the record themselves.
  std::string_view member = {};
  DescriptionList<AttributeDescription> attributes = {};  ///< those that are read
  /// What its text fills; null data when its text is not read. In an element of text, "dir" and
  /// "xml:lang" are read on every element, whatever its name.
  std::string_view textField = {};
  DescriptionList<ChildDescription> children = {};  ///< what may stand in it
  /// The known settings of its children, in the order in which they are tried.
  DescriptionList<KeyDescription> keys = {};
  /// How a setting is read whose key is none of `keys`; null when it means nothing.
  const KeyDescription* anyKey = nullptr;
};

/// The children of the root, in the order in which they are tried.
[[nodiscard]] NIMBREL_CONFIG_API DescriptionList<const ElementDescription*>
elementDescriptions() noexcept;

/// The root.
[[nodiscard]] NIMBREL_CONFIG_API const ElementDescription& widgetDescription() noexcept;

/// The attributes of every element, "xml:lang" by that name.
inline constexpr AttributeDescription COMMON_ATTRIBUTES[] = {
    {"xml:lang", ValueKind::LANGUAGE},
    {"dir", ValueKind::DIRECTION},
};

}  // namespace orvane::nimbrel::config
