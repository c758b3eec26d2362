#include <set>
#include <sstream>

#include "tests/tools/Tool.h"

namespace nimbrel_test {
namespace {

using testing::HasSubstr;

/// The codes of a text report, with their lines: "2 number-cut".
std::vector<std::string> codesIn(const std::string& report) {
  std::vector<std::string> codes;
  std::istringstream lines(report);
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("-:", 0) == 0) {
      const std::size_t code = line.rfind('[') + 1;
      codes.push_back(line.substr(2, line.find(':', 2) - 2) + ' ' +
                      line.substr(code, line.size() - 1 - code));
    }
  }
  return codes;
}

Outcome check(const std::string& document, std::vector<std::string> options = {}) {
  options.insert(options.begin(), "check");
  options.emplace_back("-");
  return run(options, document);
}

// faulty.txt is what this prints:
// nimbrel-config check --locale en --locale de --density 160 - < faulty.xml
TEST(CheckTool, FindsAFaultOfEveryKind) {
  const std::string data = NIMBREL_TEST_DATA;
  const Outcome outcome = check(contentOf(data + "/faulty.xml"),
                                {"--locale", "en", "--locale", "de", "--density", "160"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(outcome.out, contentOf(data + "/faulty.txt"));

  std::set<std::string> found = {"document-refused", "root-not-widget", "required-feature-name"};
  for (const std::string& code : codesIn(outcome.out)) {
    found.insert(code.substr(code.find(' ') + 1));
  }
  std::set<std::string> all;
  std::istringstream lines(run({"check", "--codes"}).out);
  for (std::string line; std::getline(lines, line);) {
    all.insert(line.substr(0, line.find(' ')));
  }
  EXPECT_EQ(found, all);
}

TEST(CheckTool, TellsWhatRefusesADocumentOnce) {
  const struct {
    std::string document;
    std::string line;
  } cases[] = {
      {"", "-: error: The document is empty [document-refused]"},
      {"<widget>\n  <a></b>", "-:2:10: error: "},
      {"\n<a/>", "-:2: error: a: "},
      {widget("\n<feature name='x'/>"), "-:2: error: feature: name=\"x\": "},
      {"PK\x03\x04", "-: error: no usable ZIP archive: "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.document);
    const Outcome outcome = check(c.document);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.error, "");
    EXPECT_THAT(outcome.out, testing::StartsWith(c.line));
    EXPECT_THAT(outcome.out, testing::EndsWith("]\n1 error\n"));
  }
}

TEST(CheckTool, TheLevelAskedDecides) {
  const std::string note = "<x xmlns='urn:x'/>";
  const std::string warning = "<icon/>";
  const std::string error = "<feature name='x'/>";
  const struct {
    std::string children;
    const char* counts;
    int status, strict;
  } cases[] = {{"<name>x</name>", "no findings\n", 0, 0},
               {note, "1 note\n", 0, 1},
               {note + '\n' + note, "2 notes\n", 0, 1},
               {warning, "1 warning\n", 1, 1},
               {note + warning + '\n' + warning + error, "1 error, 2 warnings, 1 note\n", 1, 1}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.children);
    const Outcome outcome = check(widget(c.children));
    EXPECT_EQ(outcome.status, c.status);
    EXPECT_THAT(outcome.out, testing::EndsWith(c.counts));
    EXPECT_EQ(check(widget(c.children), {"--strict"}).status, c.strict);
  }
}

TEST(CheckTool, WithoutLocalesEveryLanguageOfTheDocumentCounts) {
  const std::string languages =
      "\n<name xml:lang='en'>a</name>\n<name xml:lang='de'>b</name>\n<name>c</name>";
  const struct {
    std::string children;
    std::vector<std::string> options;
    std::vector<std::string> codes;
  } cases[] = {
      {languages, {}, {}},
      {languages, {"--locale", "en"}, {"3 other-language", "4 better-language"}},
      {languages, {"--locale", "fr"}, {"2 other-language", "3 other-language"}},
      {languages, {"--locale", "de", "--locale", "en"}, {"2 better-language", "4 better-language"}},
      // faults of an element that few users get
      {"\n<icon xml:lang='fr' src='a' width='9px'/>\n<icon xml:lang='en'/>",
       {},
       {"2 number-cut", "3 icon-without-src"}},
      {"\n<name>a</name>\n<name xml:lang='fr'>b</name>\n<name xml:lang='fr'>c</name>",
       {},
       {"4 repeated-element"}},
      // by line, not by language
      {"\n<icon/>\n<icon xml:lang='fr'/>", {}, {"2 icon-without-src", "3 icon-without-src"}},
      // for whoever it is
      {"<name xml:lang='en'>a</name>\n<x xmlns='urn:x'/>", {}, {"2 foreign-element"}},
      {"<name xml:lang='en'>a</name>\n<x xmlns='urn:x' xml:lang='fr'/>", {}, {}},
      // French users get nothing, so that they lose no note
      {"\n<feature xml:lang='fr' name='x'/>\n<x xmlns='urn:x'/>",
       {},
       {"2 required-feature-name", "3 foreign-element"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.children);
    EXPECT_EQ(codesIn(check(widget(c.children), c.options).out), c.codes);
  }
}

TEST(CheckTool, OfVeryManyLanguagesTheFirst64AreChecked) {
  std::string children;
  for (int i = 1; i <= 64; ++i) {
    children += "\n<icon xml:lang='x" + std::to_string(i) + "'/>";
  }
  EXPECT_EQ(check(widget(children)).error, "");
  children += "\n<icon xml:lang='y'/>\n<icon xml:lang='y'/>";
  const Outcome outcome = check(widget(children));
  EXPECT_EQ(outcome.error, "-: checked for the first 64 of its 65 languages\n");
  EXPECT_THAT(outcome.out, testing::EndsWith("64 warnings\n"));
}

TEST(CheckTool, EachFileIsCheckedAndOneThatCannotBeReadIsTold) {
  const TemporaryFile faulty(widget("<icon/>"));
  const TemporaryFile clean(widget(""));
  const Outcome outcome = run({"check", faulty.path(), "/nowhere", clean.path(), faulty.path()});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.error, "/nowhere: cannot be read: No such file or directory\n");
  const std::string line =
      faulty.path() + ":1: warning: icon: src: An icon needs a path. [icon-without-src]\n";
  EXPECT_EQ(outcome.out, line + line + "2 warnings\n");

  const Outcome none = run({"check", "/nowhere"});
  EXPECT_EQ(none.status, 2);
  EXPECT_EQ(none.out, "");
}

TEST(CheckTool, LongValuesAreCutInTheSentenceAlone) {
  const std::string half = "\xC3\xA9\xF0\x9F\x90\x9F";
  std::string sixty;
  for (int i = 0; i < 30; ++i) {
    sixty += half;
  }
  const struct {
    std::string value;
    std::string shown;
  } cases[] = {{sixty, sixty}, {sixty + "x", sixty + "..."}, {"a&#x9B;b", "a\\u009bb"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.value);
    const std::string document = widget("<icon src='a' " + ("heigth='" + c.value) + "'/>");
    EXPECT_EQ(check(document).out, "-:1: warning: icon: heigth=\"" + c.shown +
                                       "\": Nothing reads this attribute. Did you mean "
                                       "\"height\"? [unknown-attribute]\n1 warning\n");
  }
  const Json json =
      Json::parse(check(widget("<icon heigth='" + sixty + "x'/>"), {"--format", "json"}).out);
  EXPECT_EQ(json["files"][0]["findings"][0]["value"], sixty + "x");
}

TEST(CheckToolJson, HasEveryMemberOfAFinding) {
  const TemporaryFile malformed("<a>\n</b>");
  const Outcome outcome = run({"check", "--format", "json", "-", malformed.path()},
                              widget("\n<icon src='a' heigth='3'/><x xmlns='urn:x'/>"));
  EXPECT_EQ(outcome.status, 1);
  const Json json = Json::parse(outcome.out);
  ASSERT_EQ(json["files"].size(), 2U);
  EXPECT_EQ(json["files"][0]["file"], "-");
  EXPECT_EQ(json["files"][0]["findings"][0], Json::parse(R"({
    "code": "unknown-attribute", "level": "warning", "line": 2, "column": null, "element": "icon",
    "attribute": "heigth", "value": "3", "reason": "Nothing reads this attribute.",
    "suggestion": "height"})"));
  Json error = json["files"][1]["findings"][0];
  EXPECT_GT(error["column"], 0);
  EXPECT_EQ(error["element"], nullptr);
  EXPECT_EQ(error["value"], nullptr);
  EXPECT_EQ(error["suggestion"], nullptr);
  EXPECT_EQ(json["errors"], 1);
  EXPECT_EQ(json["warnings"], 1);
  EXPECT_EQ(json["notes"], 1);
}

TEST(CheckToolSarif, NamesRuleAndPlaceOfEachResult) {
  const Outcome outcome =
      check(widget("\n<x xmlns='urn:x'/><icon src='a' heigth='3'/>"), {"--format", "sarif"});
  EXPECT_EQ(outcome.status, 1);
  const Json json = Json::parse(outcome.out);
  EXPECT_EQ(json["version"], "2.1.0");
  ASSERT_EQ(json["runs"].size(), 1U);
  const Json& log = json["runs"][0];
  const Json& driver = log["tool"]["driver"];
  EXPECT_EQ(driver["name"], "nimbrel-config");
  EXPECT_EQ(driver["version"], NIMBREL_VERSION);
  EXPECT_EQ(log["invocations"][0]["executionSuccessful"], true);
  ASSERT_EQ(log["results"].size(), 2U);
  for (const Json& result : log["results"]) {
    const Json& rule = driver["rules"].at(result["ruleIndex"].get<std::size_t>());
    EXPECT_EQ(rule["id"], result["ruleId"]);
    EXPECT_EQ(rule["defaultConfiguration"]["level"], result["level"]);
    EXPECT_THAT(rule["help"]["text"].get<std::string>(), HasSubstr("\n\nMended:"));
  }
  const Json& second = log["results"][1];
  EXPECT_EQ(second["ruleId"], "unknown-attribute");
  EXPECT_EQ(second["message"]["text"],
            "icon: heigth=\"3\": Nothing reads this attribute. Did you mean \"height\"?");
  EXPECT_EQ(second["locations"], Json::parse(R"([{"physicalLocation": {
    "artifactLocation": {"uri": "-"}, "region": {"startLine": 2}}}])"));
}

TEST(CheckToolSarif, FilesAreUris) {
  const TemporaryFile file("");
  const std::string odd = file.path() + "%20 \xC3\xA9:#?\xFF";
  std::ofstream(odd) << "<a>";
  const Outcome outcome = run({"check", "--format", "sarif", odd, "/nowhere"});
  std::remove(odd.c_str());
  EXPECT_EQ(outcome.status, 2);
  const Json log = Json::parse(outcome.out)["runs"][0];
  EXPECT_EQ(log["invocations"][0]["executionSuccessful"], false);
  const Json location = log["results"][0]["locations"][0]["physicalLocation"];
  EXPECT_EQ(location["artifactLocation"]["uri"],
            "file://" + file.path() + "%2520%20%C3%A9%3A%23%3F%FF");
  EXPECT_GT(location["region"]["startColumn"], 0);
}

TEST(CheckToolCodes, AreListedAndExplained) {
  EXPECT_THAT(run({"check", "--codes"}).out,
              HasSubstr("\nnumber-cut               warning  A number was read "));
  const Outcome outcome = run({"check", "--explain", "icon-without-src"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out,
            "icon-without-src (warning)\n\nAn icon has no path.\n\nBad:\n\n    <icon src=\"\"/>\n\n"
            "Mended:\n\n    <icon src=\"map.png\"/>\n");
  EXPECT_THAT(run({"check", "--explain", "foreign-element"}).out,
              testing::EndsWith("\n\nMended: without it.\n"));
}

TEST(CheckTool, RefusesWrongUsage) {
  const std::vector<std::string> cases[] = {
      {},
      {"--format", "yaml", "-"},
      {"--explain", "nothing"},
      {"--explain", "number-cut", "-"},
      {"--codes", "-"},
      {"--codes", "--explain", "number-cut"},
      {"--locale"},
  };
  for (std::vector<std::string> arguments : cases) {
    SCOPED_TRACE(testing::PrintToString(arguments));
    arguments.insert(arguments.begin(), "check");
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.error, testing::StartsWith("nimbrel-config: "));
  }
}

}  // namespace
}  // namespace nimbrel_test
