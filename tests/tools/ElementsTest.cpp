// What the descriptions of the elements say is what the tool shows and what docs/elements.md lists.

#include <gmock/gmock.h>
#include <libxml/parser.h>
#include <libxml/relaxng.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <string_view>

#include "check/Check.h"
#include "check/FindingCode.h"
#include "config/ElementDescription.h"
#include "tests/tools/Tool.h"

namespace nimbrel_test {
namespace {

using namespace orvane::nimbrel::config;

/// One thing that a document can say.
struct Place {
  std::string element;  // as the page names it, "tavlo:network"
  std::string name;     // of an attribute or key in it; empty for the text of the element
  ValueKind kind = ValueKind::TEXT;
  const SwitchWords* words = nullptr;
  std::string field;
  std::string without;  // a document that says nothing of it
  std::string with;     // one that says `sample`
  std::string sample;
  std::string repeated;
  bool isRequired = false;
  bool isKey = false;
};

std::string sampleOf(ValueKind kind, const SwitchWords* words, const std::string& name) {
  switch (kind) {
    case ValueKind::IRI:
      return "urn:x";
    case ValueKind::ORIGIN:
      return "http://x.example";
    case ValueKind::NUMBER:
    case ValueKind::SIZE:
    case ValueKind::INTEGER:
      return "7";
    case ValueKind::DECIMAL:
      return "1.5";
    case ValueKind::BOOLEAN:
      return name == "required" ? "false" : "true";  // what is not the default
    case ValueKind::SWITCH:
      return std::string(words->trigger[0]);
    case ValueKind::LANGUAGE:
      return "fr";
    default:
      return "x";
  }
}

std::string attribute(const std::string& name, const std::string& value) {
  return " " + name + "='" + value + "'";
}

/// `attributes` of an element but for `omitted`; those that are optional only if named `wanted`.
std::string attributesFor(const DescriptionList<AttributeDescription>& attributes,
                          std::string_view omitted, std::string_view wanted) {
  std::string all;
  for (const AttributeDescription& each : attributes) {
    const std::string name(each.name);
    if (name == wanted || (each.isRequired && name != omitted)) {
      all += attribute((each.isExtension ? "t:" : "") + name, sampleOf(each.kind, nullptr, name));
    }
  }
  return all;
}

std::string tag(const std::string& name, const std::string& attributes,
                const std::string& content = "") {
  return "<" + name + attributes + ">" + content + "</" + name + ">";
}

/// All places, in the order of the page.
class Places {
 public:
  Places() {
    for (const AttributeDescription& each : widgetDescription().attributes) {
      add("widget", each, std::string(each.field), widget(""),
          widget("", attributesFor(widgetDescription().attributes, "", each.name)));
    }
    for (const ElementDescription* const each : elementDescriptions()) {
      addElement(*each);
    }
  }

  std::vector<Place> all;

 private:
  /// The path of a field from the record on.
  static std::string pathOf(const ElementDescription& element, std::string_view field) {
    std::string path(field.empty() ? "" : element.member);
    return path.append(path.empty() ? "" : ".").append(field);
  }

  void add(const std::string& element, const AttributeDescription& each, const std::string& field,
           const std::string& without, const std::string& with) {
    Place place;
    place.element = element;
    place.name = (each.isExtension ? "tavlo:" : "") + std::string(each.name);
    place.kind = each.kind;
    place.field = field;
    place.isRequired = each.isRequired;
    place.sample = sampleOf(each.kind, nullptr, std::string(each.name));
    place.without = without;
    place.with = with;
    all.push_back(place);
  }

  void addElement(const ElementDescription& element) {
    const std::string name(element.name);
    const std::string written = (element.isExtension ? "t:" : "") + name;
    const std::string shown = (element.isExtension ? "tavlo:" : "") + name;
    Place self;
    self.element = shown;
    self.field = pathOf(element, element.textField);
    self.without = widget("");
    self.with = widget(tag(written, attributesFor(element.attributes, "", ""), "x"));
    self.sample = "x";
    switch (element.repetition) {
      case Repetition::FIRST_COUNTS:
        self.repeated = "the first counts";
        break;
      case Repetition::UNIQUE_BY:
        self.repeated = "the first of each `" + std::string(element.uniqueAttribute) + "` counts";
        break;
      case Repetition::RESTARTS:
        self.repeated = "each starts from the defaults";
        break;
      case Repetition::ADDS:
        self.repeated = "each adds";
        break;
    }
    all.push_back(self);
    for (const AttributeDescription& each : element.attributes) {
      const auto document = [&](std::string_view omitted, std::string_view wanted) {
        return widget(tag(written, attributesFor(element.attributes, omitted, wanted)));
      };
      add(shown, each, pathOf(element, each.field), document(each.name, ""),
          document("", each.name));
    }
    for (const ChildDescription& child : element.children) {
      addChild(element, child, written, shown);
    }
  }

  void addChild(const ElementDescription& element, const ChildDescription& child,
                const std::string& written, const std::string& shown) {
    const std::string prefix = element.isExtension ? "t:" : "";
    const std::string childShown =
        shown + "` `" + (element.isExtension ? "tavlo:" : "") + std::string(child.name);
    const std::string parentAttributes = attributesFor(element.attributes, "", "");
    const auto document = [&](const std::string& attributes) {
      return widget(
          tag(written, parentAttributes, tag(prefix + std::string(child.name), attributes)));
    };
    const std::string keyAttribute(child.keyAttribute);
    const KeyDescription* const any = !element.keys.empty() ? &element.keys[0] : element.anyKey;
    const std::string anyName = any == nullptr || any->name.empty() ? "x" : std::string(any->name);
    const std::string base = keyAttribute.empty()
                                 ? attributesFor(child.attributes, "", "")
                                 : attribute(keyAttribute, anyName) +
                                       attribute("value", sampleOf(any->kind, any->words, anyName));
    for (const AttributeDescription& each : child.attributes) {
      const bool isOfKey = !keyAttribute.empty() && each.field.empty();
      add(childShown, each, pathOf(element, each.field),
          keyAttribute.empty() ? document("") : document(base),
          isOfKey || each.isRequired ? document(base)
                                     : document(base + attribute(std::string(each.name), "x")));
      std::string& field = all.back().field;
      if (field.find('*') != std::string::npos) {
        field.replace(field.find('*'), 1, anyName);
      }
    }
    if (keyAttribute.empty()) {
      return;
    }
    const auto addKey = [&](const KeyDescription& key) {
      const std::string name = key.name.empty() ? "x" : std::string(key.name);
      Place place;
      place.element = shown;
      place.name = key.name.empty() ? "any other" : name;
      place.kind = key.kind;
      place.words = key.words;
      place.field = pathOf(element, key.field);
      if (place.field.find('*') != std::string::npos) {
        place.field.replace(place.field.find('*'), 1, name);
      }
      place.sample = sampleOf(key.kind, key.words, name);
      place.without = widget("");
      place.with = document(attribute(keyAttribute, name) + attribute("value", place.sample));
      place.isKey = true;
      place.repeated = key.rule == KeyRule::ACCUMULATES   ? "joins a list"
                       : key.rule == KeyRule::LAST_COUNTS ? "the last counts"
                                                          : "never taken back";
      all.push_back(place);
    };
    for (const KeyDescription& key : element.keys) {
      addKey(key);
    }
    if (element.anyKey != nullptr) {
      addKey(*element.anyKey);
    }
  }
};

const Json& recordOf(const std::string& document) {
  static std::map<std::string, Json> known;
  const auto found = known.find(document);
  return found != known.end() ? found->second
                              : known.emplace(document, show(document)).first->second;
}

/// What stands in a record under a field's name, "icons[].src": of lists the last entry. Null when
/// it is absent.
Json at(const Json& record, std::string field) {
  Json value = record;
  while (!field.empty()) {
    const std::size_t end = std::min(field.find('.'), field.size());
    std::string step = field.substr(0, end);
    field.erase(0, end + 1);
    const bool isList = step.size() > 2 && step.substr(step.size() - 2) == "[]";
    step.resize(isList ? step.size() - 2 : step.size());
    value = value.is_object() && value.contains(step) ? value[step] : Json();
    if (isList) {
      // The last locale is always "*".
      const std::size_t last = step == "userAgentLocales" ? 2 : 1;
      value = value.is_array() && value.size() >= last ? value[value.size() - last] : Json();
    }
  }
  return value.is_object() && value.contains("text") ? value["text"] : value;
}

TEST(Elements, FillTheFieldsThatTheyName) {
  std::size_t fields = 0;
  for (const Place& place : Places().all) {
    if (place.field.empty()) {
      continue;
    }
    SCOPED_TRACE(place.element + " " + place.name + " fills " + place.field);
    ++fields;
    const Json before =
        place.name == "defaultlocale" ? Json() : at(recordOf(place.without), place.field);
    const Json after = at(recordOf(place.with), place.field);
    EXPECT_NE(after, before) << "is it in tools/record/RecordFields.h?";
    if (place.kind != ValueKind::SWITCH && place.kind != ValueKind::ORIGIN) {
      EXPECT_EQ(after.is_string() ? after.get<std::string>() : after.dump(), place.sample);
    }
  }
  EXPECT_GT(fields, 80U);
}

TEST(Elements, OfSettingsAreShownAsText) {
  for (const Place& place : Places().all) {
    std::string label = place.field.substr(place.field.find('.') + 1);
    label.resize(std::min(label.find_first_of(".["), label.size()));
    if (place.isKey && label != place.field) {
      const Outcome outcome = run({"show", "-"}, place.with);
      EXPECT_NE(outcome.out.find("  " + (label == "otherSettings" ? "x" : label)),
                std::string::npos)
          << place.field << ": has it a section in tools/record/RecordText.cpp?\n"
          << outcome.out;
    }
  }
}

TEST(Elements, FillAllThatARecordHas) {
  std::string fields;
  for (const Place& place : Places().all) {
    fields += place.field + "\n";
  }
  const auto expectFilled = [&](const std::string& name) {
    EXPECT_NE(("\n" + fields).find("\n" + name), std::string::npos)
        << name << ": by which element?";
  };
  const Json record = recordOf(widget(""));
  for (const auto& [name, value] : record.items()) {
    if (name == "elements" || name == "errorText") {
      continue;
    }
    expectFilled(name);
    const Json members = value.is_object() ? value : Json::object();
    for (const auto& [member, ignored] : members.items()) {
      expectFilled(name + "." + member);
    }
  }
}

void ignoreProblem(void* /*context*/, const char* /*format*/, ...) {}

/// share/widget.rng, as a validator.
class Schema {
 public:
  Schema() : schema_(nullptr, xmlRelaxNGFree) {
    const std::unique_ptr<xmlRelaxNGParserCtxt, decltype(&xmlRelaxNGFreeParserCtxt)> parser(
        xmlRelaxNGNewParserCtxt(NIMBREL_SCHEMA), xmlRelaxNGFreeParserCtxt);
    schema_.reset(xmlRelaxNGParse(parser.get()));
  }

  [[nodiscard]] bool accepts(const std::string& document) const {
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> tree(
        xmlReadMemory(document.data(), static_cast<int>(document.size()), "", nullptr, 0),
        xmlFreeDoc);
    EXPECT_NE(tree, nullptr) << document;
    const std::unique_ptr<xmlRelaxNGValidCtxt, decltype(&xmlRelaxNGFreeValidCtxt)> context(
        xmlRelaxNGNewValidCtxt(schema_.get()), xmlRelaxNGFreeValidCtxt);
    xmlRelaxNGSetValidErrors(context.get(), ignoreProblem, ignoreProblem, nullptr);
    return xmlRelaxNGValidateDoc(context.get(), tree.get()) == 0;
  }

 private:
  std::unique_ptr<xmlRelaxNG, decltype(&xmlRelaxNGFree)> schema_;
};

struct Values {
  std::vector<std::string> good;
  std::vector<std::string> bad;
};

/// Values on both sides of each limit that a schema can express.
Values valuesOf(ValueKind kind, const SwitchWords* words) {
  const std::string eight = "abcdefgh";
  switch (kind) {
    case ValueKind::IRI:
      return {{"urn:x", "http://\xC3\xA4.example/"}, {"x", "", "a b:c"}};
    case ValueKind::ORIGIN:
      return {{"*", "http://a.example", "wss://a.example:1"},
              {"a.example", "wss://a.example", "http://a.example/x", ""}};
    case ValueKind::NUMBER:
      return {{"0", "4294967295"}, {"4294967296", "-1", "x", ""}};
    case ValueKind::SIZE:
      return {{"1", "4294967295"}, {"0", "4294967296", "-1", "x", ""}};
    case ValueKind::INTEGER:
      return {{"-2147483648", "2147483647"}, {"-2147483649", "2147483648", "x", ""}};
    case ValueKind::DECIMAL:
      return {{"1", "1.5", ".5", "2e3"}, {"1.5.1", "x", "", "1,5"}};
    case ValueKind::BOOLEAN:
      return {{"true", "false"}, {"True", "yes", ""}};
    case ValueKind::LANGUAGE:
      return {{"*", "", "de-AT", eight + "-" + eight},
              {eight + "i", "de-" + eight + "i", "de_AT", "de-"}};
    case ValueKind::DIRECTION:
      return {{"ltr", "rtl", "lro", "rlo"}, {"up", ""}};
    case ValueKind::APPLICATION_ID:
      return {{"a", eight + eight + eight + "12345678"},
              {eight + eight + eight + "123456789", "", "A", "a-b"}};
    case ValueKind::SWITCH: {
      Values values = {{}, {"maybe", "Yes", "TRUE"}};
      for (const std::string_view word :
           {words->trigger[0], words->trigger[1], words->opposite[0], words->opposite[1]}) {
        if (word.data() != nullptr) {
          values.good.emplace_back(word);
        }
      }
      return values;
    }
    default:
      return {{"x", "", "any text"}, {}};
  }
}

/// The text with the last `from` in it replaced; empty, which is no document, when there is none.
std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.rfind(from);
  return at == std::string::npos ? "" : text.replace(at, from.size(), to);
}

TEST(Elements, StandInTheSchema) {
  const Schema schema;
  const std::vector<Place> places = Places().all;
  std::size_t checks = 0;
  const auto expect = [&](bool isValid, const std::string& document) {
    ++checks;
    EXPECT_EQ(schema.accepts(document), isValid) << document;
  };
  // Each value in place of `written`, with what comes before and behind it in a tag.
  const auto expectValues = [&](const Place& place, const std::string& written,
                                const std::string& before, const Values& values,
                                const std::string& behind) {
    for (const std::string& value : values.good) {
      expect(true, replaced(place.with, written, before + value + behind));
    }
    for (const std::string& value : values.bad) {
      expect(false, replaced(place.with, written, before + value + behind));
    }
  };
  for (const Place& place : places) {
    SCOPED_TRACE(place.element + " " + place.name);
    const bool isExtension = place.element.compare(0, 6, "tavlo:") == 0;
    if (place.name.empty()) {  // the element itself
      const bool isText = !place.field.empty();
      expect(isText, place.with);
      const std::string prefix = isExtension ? "t:" : "";
      const std::string from = ">x</" + prefix + place.element.substr(isExtension ? 6 : 0);
      const std::string end = isText ? from : ">" + from.substr(2);
      for (const AttributeDescription& each : COMMON_ATTRIBUTES) {
        expectValues(place, from, " " + std::string(each.name) + "='", valuesOf(each.kind, nullptr),
                     "'" + end);
      }
      expect(false, replaced(place.with, from, " unknown='x'" + end));
      expect(isText, replaced(place.with, from, "><" + prefix + "unknown/" + end));
      continue;
    }
    expect(true, place.with);
    const std::string name = place.isKey ? "value"
                             : place.name.find(':') != std::string::npos
                                 ? "t:" + place.name.substr(6)
                                 : place.name;
    const std::string before = " " + name + "='";
    const std::string written = before + place.sample + "'";
    if (place.with.find(written) == std::string::npos) {
      continue;  // an attribute of each key, which is tried with that
    }
    expectValues(place, written, before, valuesOf(place.kind, place.words), "'");
    if (place.isRequired) {
      expect(false, replaced(place.with, written, ""));
    }
    if (place.isKey && place.name != "any other") {
      const bool takesAny = std::any_of(places.begin(), places.end(), [&](const Place& other) {
        return other.element == place.element && other.name == "any other";
      });
      const std::string key = "'" + place.name + "'";
      expect(takesAny, replaced(place.with, key, "'unknownKey'"));
    }
  }
  EXPECT_GT(checks, 350U);
}

// "x" is an unknown view mode and encoding.
TEST(Elements, AreNoMistakesToTheChecker) {
  using namespace orvane::nimbrel;
  for (const Place& place : Places().all) {
    if (place.name.empty() && place.field.empty()) {
      continue;  // its text is not read
    }
    const auto report = check::checkDocument(place.with);
    for (const check::Diagnostic& finding : report->findings()) {
      EXPECT_THAT(check::descriptionOf(finding.code).name,
                  testing::AnyOf("suspicious-value", "invalid-value"))
          << place.with;
    }
  }
}

TEST(Elements, HaveAFileEachAndAreListed) {
  std::string files;
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(NIMBREL_HANDLERS)) {
    const std::string name = entry.path().filename();
    if (entry.path().extension() == ".cpp" && name != "Elements.cpp" &&
        name != "ExtensionFrame.cpp") {
      files += " " + name;
      ++count;
    }
  }
  EXPECT_EQ(elementDescriptions().size() + 1, count)
      << "which of" << files << " is missing in Elements.cpp or config/CMakeLists.txt?";
}

TEST(Elements, StandInTheExample) {
  const std::string example = contentOf(NIMBREL_EXAMPLES "/config.xml");
  for (const ElementDescription* const each : elementDescriptions()) {
    const std::string name = (each->isExtension ? "<tavlo:" : "<") + std::string(each->name);
    EXPECT_NE(example.find(name), std::string::npos) << name << " is missing in config.xml";
  }
}

// What a description cannot say.
struct Note {
  const char* place;
  const char* accepted;   // added; null: nothing to add
  const char* otherwise;  // instead; null: what the kind says
};
constexpr Note NOTES[] = {
    {"widget version", nullptr, "empty: ignored"},
    {"widget viewmodes", ", known or not; a repeated one is ignored", nullptr},
    {"widget defaultlocale", ", joins the user's locales", "empty or there already: ignored"},
    {"widget tavlo:applicationVersion", nullptr, "empty or above 32 bits: ignored"},
    {"content", "the first of all documents of a parser", nullptr},
    {"content src", nullptr, "absent or empty: no start file"},
    {"icon src", nullptr, "absent or empty: no icon"},
    {"preference name", nullptr, "absent or empty: no preference"},
    {"feature name", nullptr,
     "absent: no feature; no IRI: the document is rejected if it is required, else no feature"},
    {"feature` `param name", nullptr, "absent or empty: no parameter"},
    {"feature` `param value", nullptr, "absent: no parameter"},
    {"access origin",
     "; the port may be left out only where it is 80 for \"http\" or 443 for \"https\"",
     "no access request"},
    {"access subdomains", "; not read for \"*\"", "no access request"},
    {"tavlo:auth any other", ", which asks for token authentication", "error text, goes on"},
    {"tavlo:gestures", "properties are kept", nullptr},
    {"tavlo:gestures` `tavlo:param properties", ", kept if the gesture is switched on", nullptr},
    {"tavlo:permissions any other", "; an absent `value` grants", nullptr},
    {"tavlo:settings debug", " and switches on the debug lines of the process", nullptr},
    {"tavlo:settings defaultFontSize",
     " of pixels, at least 1; where the host answers a density for \"screen\" and \"dpi\", the "
     "first "
     "counts, and a name that ends in the density counts before the plain one",
     nullptr},
    {"tavlo:settings minimumFontSize", " of pixels, at least 0",
     "error text, goes on; no number: 0"},
    {"tavlo:settings zoomFactor", ", above 0", nullptr},
    {"tavlo:resources ApplicationCacheLoadDelay", ", at least 0",
     "negative: error text, goes on; no number: 0"},
    {"tavlo:resources any other", ", kept by its key", nullptr},
    {"tavlo:export resource", nullptr, "absent: error text, no export"},
};

std::string quoted(const std::string_view (&words)[2]) {
  std::string text = "\"" + std::string(words[0]) + "\"";
  return words[1] == words[0] ? text : text + " or \"" + std::string(words[1]) + "\"";
}

std::string acceptedBy(const Place& place) {
  constexpr const char* TEXTS[] = {"anything",
                                   "a path",
                                   "an IRI",
                                   "\"*\", or scheme, host and port of an IRI",
                                   "number",
                                   "number of pixels, not 0",
                                   "signed number",
                                   "number such as \"1.5\"",
                                   "\"true\", \"false\"",
                                   nullptr,
                                   "words",
                                   "language tag",
                                   "\"ltr\", \"rtl\", \"lro\", \"rlo\"",
                                   "1 to 32 lower-case letters and digits",
                                   "anything",
                                   "anything"};
  if (place.kind == ValueKind::SWITCH) {
    return quoted(place.words->trigger) + " makes it " +
           at(recordOf(place.with), place.field).dump();
  }
  return place.name.empty() ? (place.field.empty() ? "" : "text")
                            : TEXTS[static_cast<std::size_t>(place.kind)];
}

std::string otherwiseOf(const Place& place) {
  if (place.isRequired) {
    return place.element.substr(0, 5) == "tavlo" ? "absent: stops" : "absent: ignored";
  }
  switch (place.kind) {
    case ValueKind::NUMBER:
      return place.isKey ? "empty or above 32 bits: the document is rejected" : "ignored";
    case ValueKind::INTEGER:
    case ValueKind::DECIMAL:
      return "error text, goes on";
    case ValueKind::SWITCH:
      return place.repeated == "the last counts"
                 ? "counts as \"" + std::string(place.words->opposite[0]) + "\""
                 : "ignored";
    case ValueKind::IRI:
    case ValueKind::SIZE:
    case ValueKind::BOOLEAN:
    case ValueKind::APPLICATION_ID:
      return "ignored";
    default:
      return "";
  }
}

std::string defaultOf(const Place& place) {
  if (place.field.empty() || place.isRequired) {
    return "";
  }
  const Json value = at(recordOf(place.without), place.field);
  return place.name == "defaultlocale" || value.is_null()
             ? (place.field.back() == ']' || place.name == "any other" ? "none" : "None")
         : value == Json("") ? "empty"
                             : value.dump();
}

/// The columns behind the first.
std::string columnsOf(const Place& place) {
  std::string accepted = acceptedBy(place);
  std::string otherwise = otherwiseOf(place);
  for (const Note& note : NOTES) {
    if (note.place == place.element + (place.name.empty() ? "" : " " + place.name)) {
      accepted += note.accepted == nullptr ? "" : note.accepted;
      otherwise = note.otherwise == nullptr ? otherwise : note.otherwise;
    }
  }
  std::string columns = " |";
  for (const std::string& column : {accepted, place.repeated, defaultOf(place), otherwise}) {
    columns += (column.empty() ? "" : " ") + column + " |";
  }
  return columns + "\n";
}

/// Neighbours of which the same is to be said share a row.
std::string table() {
  std::string text =
      "| Element, attribute or key | Accepted | Repeated | Default | Otherwise |\n"
      "|---|---|---|---|---|\n"
      "| `widget` | the root, in the W3C namespace | | | any other root: the document is rejected "
      "|\n";
  std::string columns;
  std::string element;
  for (const Place& place : Places().all) {
    const std::string next = columnsOf(place);
    if (next == " | | each adds | | |\n") {
      continue;
    }
    const std::string name =
        place.name == "any other"
            ? (place.element == "tavlo:resources" ? "any other key" : "any key")
            : "`" + place.name + "`";
    if (next == columns && place.element == element && !place.name.empty()) {
      text.insert(text.size() - columns.size(), ", " + name);
      continue;
    }
    columns = next;
    element = place.element;
    text += "| `" + element + "`" + (place.name.empty() ? "" : " " + name) + columns;
  }
  return text +
         "| any element: `xml:lang` | a language tag; of children of the root it also decides the "
         "order | | inherited | |\n"
         "| any element: `dir` | \"ltr\", \"rtl\", \"lro\", \"rlo\" | | inherited, \"ltr\" | "
         "ignored "
         "|\n";
}

TEST(Elements, AreOnTheirPage) {
  std::string page = contentOf(NIMBREL_ELEMENTS_PAGE);
  const std::size_t start = page.find("| Element,");
  ASSERT_NE(start, std::string::npos);
  const std::string expected = page.substr(0, start) + table();
  if (std::getenv("NIMBREL_UPDATE_DOCS") != nullptr) {
    std::ofstream(NIMBREL_ELEMENTS_PAGE) << expected;
    page = contentOf(NIMBREL_ELEMENTS_PAGE);
  }
  EXPECT_EQ(page, expected) << "NIMBREL_UPDATE_DOCS=1 writes it anew";
}

}  // namespace
}  // namespace nimbrel_test
