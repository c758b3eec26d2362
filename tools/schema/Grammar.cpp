#include <algorithm>
#include <set>
#include <string_view>

#include "config/ElementDescription.h"
#include "config/Namespaces.h"
#include "tools/schema/Builders.h"

namespace orvane::nimbrel::tools {
namespace {

using config::AttributeDescription;
using config::ChildDescription;
using config::DescriptionList;
using config::ElementDescription;
using config::KeyDescription;
using config::ValueKind;
using Kind = Pattern::Kind;

// Values that can be told from others; all others are any text. Each takes what the parser takes
// and more: the grammar accepts all that is right. A token has no white space but single spaces;
// Jing does not understand "\s" in a negated class.
constexpr struct {
  ValueKind kind;
  const char* name;        // of the definition
  const char* type;        // of XML Schema
  const char* expression;  // likewise; empty where the type says all
  const char* excepted = nullptr;
} DATATYPES[] = {
    {ValueKind::IRI, "iri", "token", R"([A-Za-z][A-Za-z0-9+.\-]*:\S*)"},
    {ValueKind::ORIGIN, "origin", "token",
     R"(\*|https?://[^/?#@* ]+|[A-Za-z][A-Za-z0-9+.\-]*://[^/?#@* ]+:[0-9]+)"},
    {ValueKind::NUMBER, "number", "unsignedInt", ""},
    {ValueKind::SIZE, "size", "unsignedInt", "", "0"},
    {ValueKind::INTEGER, "integer", "int", ""},
    {ValueKind::DECIMAL, "decimal", "token",
     R"([+\-]?([0-9]+(\.[0-9]*)?|\.[0-9]+)([Ee][+\-]?[0-9]+)?)"},
    {ValueKind::APPLICATION_ID, "application-id", "token", "[a-z0-9]{1,32}"},
    {ValueKind::LANGUAGE, "language", "token", R"((\*|[A-Za-z]{1,8}(-[A-Za-z0-9]{1,8})*)?)"},
};

// What several definitions refer to.
constexpr char COMMON[] = "common-attributes";
constexpr char FOREIGN_ATTRIBUTES[] = "foreign-attributes";
constexpr char BOOLEAN[] = "boolean";
constexpr char DIRECTION[] = "direction";
constexpr char TEXT[] = "text-content";
constexpr char NESTED[] = "nested-element";
constexpr char FOREIGN[] = "foreign-element";
constexpr char ANYTHING[] = "anything";

std::string prefixed(std::string_view name, bool isExtension) {
  std::string result = isExtension ? "tavlo:" : "";
  return result.append(name);
}

std::string definitionOf(const ElementDescription& element) {
  std::string name = element.isExtension ? "tavlo." : "";
  return name.append(element.name);
}

Pattern valueOf(ValueKind kind) {
  if (kind == ValueKind::BOOLEAN) {
    return reference(BOOLEAN);
  }
  for (const auto& datatype : DATATYPES) {
    if (datatype.kind == kind) {
      return reference(datatype.name);
    }
  }
  return text();
}

Pattern valueOf(const KeyDescription& key) {
  if (key.kind != ValueKind::SWITCH) {
    return valueOf(key.kind);
  }
  std::vector<std::string_view> all;
  for (const std::string_view word : {key.words->trigger[0], key.words->opposite[0],
                                      key.words->trigger[1], key.words->opposite[1]}) {
    if (word.data() != nullptr && std::find(all.begin(), all.end(), word) == all.end()) {
      all.push_back(word);
    }
  }
  return words(all);
}

void addAttributes(Patterns& parts, DescriptionList<AttributeDescription> attributes,
                   std::string_view without = {}) {
  for (const AttributeDescription& each : attributes) {
    if (without.empty() || (each.name != without && each.name != "value")) {
      Pattern pattern = attribute(prefixed(each.name, each.isExtension), valueOf(each.kind));
      parts.push_back(each.isRequired ? std::move(pattern) : optional(std::move(pattern)));
    }
  }
}

/// Key and value of a setting. Keys whose values are read alike share a row.
class SettingRows {
 public:
  SettingRows(std::string_view keyAttribute, bool isValueRequired)
      : keyAttribute_(keyAttribute), isValueRequired_(isValueRequired) {}

  void add(Pattern key, Pattern value) {
    const auto same = std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) {
      return row.keys.front().kind == key.kind && row.value.kind == value.kind &&
             row.value.name == value.name && wordsOf(row.value) == wordsOf(value);
    });
    if (same == rows_.end()) {
      rows_.push_back({{std::move(key)}, std::move(value)});
    } else {
      same->keys.push_back(std::move(key));
    }
  }

  /// Adds the attributes to those of an element.
  void addTo(Patterns& parts) const {
    Patterns alternatives;
    for (const Row& row : rows_) {
      Pattern value = attribute("value", row.value);
      alternatives.push_back({Kind::GROUP,
                              {},
                              {attribute(keyAttribute_, choice(row.keys)),
                               isValueRequired_ ? std::move(value) : optional(std::move(value))}});
    }
    if (alternatives.size() == 1) {
      const Patterns& attributes = alternatives.front().parts;
      parts.insert(parts.end(), attributes.begin(), attributes.end());
    } else {
      parts.push_back(choice(std::move(alternatives)));
    }
  }

 private:
  struct Row {
    Patterns keys;
    Pattern value;
  };

  static std::set<std::string> wordsOf(const Pattern& value) {
    std::set<std::string> all;
    for (const Pattern& word : value.parts) {
      all.insert(word.name);
    }
    return all;
  }

  std::string keyAttribute_;
  bool isValueRequired_;
  std::vector<Row> rows_;
};

void addSetting(Patterns& parts, const ElementDescription& element, const ChildDescription& child) {
  const auto value =
      std::find_if(child.attributes.begin(), child.attributes.end(),
                   [](const AttributeDescription& each) { return each.name == "value"; });
  SettingRows rows(child.keyAttribute, value != child.attributes.end() && value->isRequired);
  std::vector<std::string> names;
  for (const KeyDescription& key : element.keys) {
    names.emplace_back(key.name);
    rows.add({Kind::VALUE, names.back()}, valueOf(key));
    if (key.hasDensityVariants) {
      // Which of them counts is up to the screen; the others may say anything.
      rows.add({Kind::DATA, "token", {}, {}, names.back() + R"([0-9\-]+)"}, text());
    }
  }
  if (element.anyKey != nullptr) {
    rows.add({Kind::DATA, "token", {}, names}, valueOf(*element.anyKey));
  }
  rows.addTo(parts);
}

/// What may stand in an element besides its attributes.
Pattern contentOf(const ElementDescription& element) {
  if (element.textField.data() != nullptr) {
    return reference(TEXT);
  }
  Patterns children;
  for (const ChildDescription& child : element.children) {
    Patterns attributes = {reference(COMMON)};
    addAttributes(attributes, child.attributes, child.keyAttribute);
    Patterns parts = {together(std::move(attributes))};
    if (!child.keyAttribute.empty()) {
      addSetting(parts, element, child);
    }
    parts.push_back(repeated(reference(FOREIGN)));
    children.push_back(
        {Kind::ELEMENT, prefixed(child.name, element.isExtension), std::move(parts)});
  }
  // Nothing that an extension element does not know may stand between its settings.
  if (!element.isExtension || children.empty()) {
    children.push_back(reference(FOREIGN));
  }
  return repeated(choice(std::move(children)));
}

void addElement(std::vector<Definition>& all, const ElementDescription& element) {
  Patterns attributes = {reference(COMMON)};
  addAttributes(attributes, element.attributes);
  all.push_back({definitionOf(element),
                 {Kind::ELEMENT,
                  prefixed(element.name, element.isExtension),
                  {together(std::move(attributes)), contentOf(element)}}});
}

void addShared(std::vector<Definition>& all, std::vector<std::string> elements) {
  const std::vector<std::string> ours = {"local:*", "w:*", "tavlo:*"};
  const Pattern language = optional(attribute("xml:lang", reference("language")));
  const Pattern direction = optional(attribute("dir", reference(DIRECTION)));
  all.push_back({COMMON, together({language, direction, reference(FOREIGN_ATTRIBUTES)})});
  all.push_back({FOREIGN_ATTRIBUTES, anyAttribute({"local:*", "w:*", "tavlo:*", "xml:lang"})});
  // Within text an element counts by its text, language and direction alone.
  all.push_back({TEXT, repeated(choice({text(), reference(NESTED)}))});
  all.push_back(
      {NESTED,
       {Kind::ELEMENT,
        "*",
        {together({language, direction, anyAttribute({"dir", "xml:lang"})}), reference(TEXT)},
        std::move(elements)}});
  all.push_back({FOREIGN, {Kind::ELEMENT, "*", {reference(ANYTHING)}, ours}});
  all.push_back({ANYTHING,
                 {Kind::GROUP,
                  {},
                  {together({optional(attribute("xml:lang", text())), anyAttribute({"xml:lang"})}),
                   repeated(choice({text(), {Kind::ELEMENT, "*", {reference(ANYTHING)}}}))}}});
  all.push_back({BOOLEAN, words({"true", "false"})});
  all.push_back({DIRECTION, words({"ltr", "rtl", "lro", "rlo"})});
  for (const auto& datatype : DATATYPES) {
    std::vector<std::string> excepted;
    if (datatype.excepted != nullptr) {
      excepted.emplace_back(datatype.excepted);
    }
    all.push_back(
        {datatype.name, {Kind::DATA, datatype.type, {}, std::move(excepted), datatype.expression}});
  }
}

}  // namespace

std::vector<Definition> grammar() {
  const ElementDescription& root = config::widgetDescription();
  Patterns children;
  std::vector<std::string> names;
  for (const ElementDescription* const element : config::elementDescriptions()) {
    children.push_back(reference(definitionOf(*element)));
    names.push_back(prefixed(element->name, element->isExtension));
  }
  children.push_back(reference(FOREIGN));

  Patterns attributes = {reference(COMMON)};
  addAttributes(attributes, root.attributes);
  std::vector<Definition> all = {
      {definitionOf(root),
       {Kind::ELEMENT,
        std::string(root.name),
        {together(std::move(attributes)), repeated(choice(std::move(children)))}}}};
  for (const ElementDescription* const element : config::elementDescriptions()) {
    addElement(all, *element);
  }
  addShared(all, std::move(names));
  return all;
}

const std::vector<std::pair<std::string, std::string>>& namespaces() {
  static const std::vector<std::pair<std::string, std::string>> ALL = {
      {"w", config::W3C_WIDGETS_NAMESPACE}, {"tavlo", config::EXTENSION_NAMESPACE}, {"local", ""}};
  return ALL;
}

const std::vector<std::string>& introduction() {
  static const std::vector<std::string> LINES = {
      "Configuration documents of web applications (config.xml), for editors and validators.",
      "Written from the descriptions by which the parser reads; docs/editors.md says how."};
  return LINES;
}

}  // namespace orvane::nimbrel::tools
