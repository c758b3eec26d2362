#include <gmock/gmock.h>

#include <set>
#include <sstream>

#include "tests/tools/Tool.h"

namespace nimbrel_test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// The codes of a text report, with their lines: "2 not-a-number".
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

  std::set<std::string> found = {"document-rejected", "wrong-root",     "required-feature-name",
                                 "missing-file",                       // of packages, this and
                                 "outside-package",   "unknown-type",  // these
                                 "ambiguous-name",    "unlisted-bytes", "unusable-package"};
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

TEST(CheckTool, ReportsOnceWhyADocumentIsRejected) {
  const struct {
    std::string document;
    std::string line;
  } cases[] = {
      {"", "-: error: The document is empty. [document-rejected]"},
      {"<widget>\n  <a></b>", "-:2:6: error: "},
      {"\n<a/>", "-:2:2: error: a: "},
      {widget("\n<feature name='x'/>"), "-:2:16: error: feature: name=\"x\": "},
      {"PK\x03\x04", "-: error: The package is no usable ZIP archive: it "},
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

TEST(CheckTool, EachFileIsCheckedAndOneThatCannotBeReadIsTold) {
  const TemporaryFile faulty(widget("<icon/>"));
  const TemporaryFile clean(widget(""));
  const Outcome outcome = run({"check", faulty.path(), "/nowhere", clean.path(), faulty.path()});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.error, "/nowhere: cannot be read: No such file or directory\n");
  const std::string line =
      faulty.path() +
      ":1:100: warning: icon: src: <icon> needs src=\"...\"; without it this icon is ignored. "
      "[missing-attribute]\n";
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
    EXPECT_THAT(
        check(document).out,
        testing::EndsWith(": warning: icon: heigth=\"" + c.shown +
                          "\": <icon> has no attribute \"heigth\"; it has src, width and height. "
                          "Did you mean \"height\"? "
                          "[unknown-attribute]\n1 warning\n"));
  }
  const Json json = Json::parse(
      check(widget("<icon src='a' heigth='" + sixty + "x'/>"), {"--format", "json"}).out);
  EXPECT_EQ(json["files"][0]["findings"][0]["value"], sixty + "x");
}

TEST(CheckToolJson, HasEveryMemberOfAFinding) {
  const TemporaryFile malformed("<a>\n</b>");
  const Outcome outcome =
      run({"check", "--format", "json", "-", malformed.path()},
          widget("\n<icon src='a' heigth='3'/><x xmlns='urn:x'/><icon src='a'/>"));
  EXPECT_EQ(outcome.status, 1);
  const Json json = Json::parse(outcome.out);
  ASSERT_EQ(json["files"].size(), 2U);
  EXPECT_EQ(json["files"][0]["file"], "-");
  EXPECT_EQ(json["files"][0]["findings"][0], Json::parse(R"({
    "code": "unknown-attribute", "level": "warning", "line": 2, "column": 15, "endLine": 2,
    "endColumn": 21, "byte": 113, "endByte": 119, "element": "icon", "attribute": "heigth",
    "value": "3", "reason": "<icon> has no attribute \"heigth\"; it has src, width and height.",
    "suggestion": "height", "related": null,
    "fixes": [{"edits": [{"line": 2, "column": 15, "endLine": 2, "endColumn": 21, "byte": 113,
                          "endByte": 119, "text": "height"}]}]})"));
  EXPECT_EQ(json["files"][0]["findings"][2]["related"], Json::parse(R"({"line": 2, "column": 2})"));
  Json error = json["files"][1]["findings"][0];
  EXPECT_GT(error["column"], 0);
  EXPECT_EQ(error["element"], nullptr);
  EXPECT_EQ(error["value"], nullptr);
  EXPECT_EQ(error["suggestion"], nullptr);
  EXPECT_EQ(json["errors"], 1);
  EXPECT_EQ(json["warnings"], 2);
  EXPECT_EQ(json["notes"], 1);
}

TEST(CheckToolSarif, NamesRuleAndPlaceOfEachResult) {
  const Outcome outcome = check(
      widget(
          "\n<x xmlns='urn:x'>\xF0\x9F\x90\x9F</x><icon src='a' heigth='[3](x)'/><icon src='a'/>"),
      {"--format", "sarif"});
  EXPECT_EQ(outcome.status, 1);
  const Json json = Json::parse(outcome.out);
  EXPECT_EQ(json["version"], "2.1.0");
  ASSERT_EQ(json["runs"].size(), 1U);
  const Json& log = json["runs"][0];
  const Json& driver = log["tool"]["driver"];
  EXPECT_EQ(driver["name"], "nimbrel-config");
  EXPECT_EQ(driver["version"], NIMBREL_VERSION);
  EXPECT_EQ(log["invocations"][0]["executionSuccessful"], true);
  ASSERT_EQ(log["results"].size(), 3U);
  for (const Json& result : log["results"]) {
    const Json& rule = driver["rules"].at(result["ruleIndex"].get<std::size_t>());
    EXPECT_EQ(rule["id"], result["ruleId"]);
    EXPECT_EQ(rule["defaultConfiguration"]["level"], result["level"]);
    EXPECT_THAT(rule["help"]["text"].get<std::string>(), HasSubstr("\n\nFixed:"));
    EXPECT_THAT(rule["fullDescription"]["text"].get<std::string>(),
                StartsWith(rule["shortDescription"]["text"].get<std::string>()));
    // Without an address at which the documentation is there is none.
    EXPECT_EQ(rule.value("helpUri", ""), driver.contains("informationUri")
                                             ? driver["informationUri"].get<std::string>() +
                                                   "findings.md#" + rule["id"].get<std::string>()
                                             : "");
  }
  const Json& second = log["results"][1];
  EXPECT_EQ(second["ruleId"], "unknown-attribute");
  EXPECT_EQ(second["message"]["text"],
            "icon: heigth=\"\\[3\\](x)\": <icon> has no attribute \"heigth\"; it has src, width "
            "and height. Did you mean \"height\"?");
  EXPECT_EQ(second["locations"], Json::parse(R"([{"physicalLocation": {
    "artifactLocation": {"uri": "-", "uriBaseId": "SRCROOT"}, "region": {"startLine": 2, "startColumn": 38, "endLine": 2,
    "endColumn": 44, "byteOffset": 138, "byteLength": 6}}}])"));
  EXPECT_EQ(log["columnKind"], "utf16CodeUnits");
  EXPECT_EQ(log["results"][2]["relatedLocations"][0]["physicalLocation"]["region"]["startLine"], 2);
}

TEST(CheckToolSarif, FilesAreNormalizedUris) {
  const Row rows[] = {{"-", "-"},
                      {"./a//b/../c.xml", "a/c.xml"},
                      {"../../x/./y.xml", "../../x/y.xml"},
                      {"a/..", "."},
                      {"/../a/./b", "file:///a/b"},
                      {"/", "file:///"},
                      {"b%20 \xC3\xA9:#?\xFF", "b%2520%20%C3%A9%3A%23%3F%FF"}};
  expectRows(rows, [](const std::string& name) {
    const Outcome outcome = check("<a>", {"--format", "sarif", "--stdin-name", name});
    const Json result = Json::parse(outcome.out)["runs"][0]["results"][0];
    const Json artifact = result["locations"][0]["physicalLocation"]["artifactLocation"];
    EXPECT_EQ(artifact.contains("uriBaseId"), name[0] != '/');
    return artifact["uri"].get<std::string>();
  });
}

TEST(CheckToolSarif, NotifiesOfFilesThatCannotBeRead) {
  const Outcome outcome = run({"check", "--format", "sarif", "/nowhere", "-"}, widget("<icon/>"));
  EXPECT_EQ(outcome.status, 2);
  const Json log = Json::parse(outcome.out)["runs"][0];
  EXPECT_EQ(log["results"].size(), 1U);
  EXPECT_EQ(log["invocations"][0], Json::parse(R"({"executionSuccessful": false,
    "toolExecutionNotifications": [{"descriptor": {"id": "unreadable-file", "index": 0},
    "level": "error", "message": {"text": "/nowhere: cannot be read: No such file or directory"},
    "locations": [{"physicalLocation": {"artifactLocation": {"uri": "file:///nowhere"}}}]}]})"));
  EXPECT_EQ(log["tool"]["driver"]["notifications"][0]["id"], "unreadable-file");
}

// What begins in one line and ends in another, behind characters of every width.
constexpr char TWO_LINES[] =
    "<widget xmlns='http://www.w3.org/ns/widgets'>\n\xF0\x9F\x90\x9F"
    "<name dir='\n\xC3\xA9'>{0}</name></widget>";

TEST(CheckToolSarif, HasTheEndInAnotherLine) {
  const Json log = Json::parse(check(TWO_LINES, {"--format", "sarif"}).out);
  const Json& results = log["runs"][0]["results"];
  EXPECT_EQ(results.back()["locations"][0]["physicalLocation"]["region"],
            Json::parse(R"({"startLine": 2, "startColumn": 14, "endLine": 3, "endColumn": 2,
                            "byteOffset": 61, "byteLength": 3})"));
  const Json json = Json::parse(check(TWO_LINES, {"--format", "json"}).out);
  const Json& finding = json["files"][0]["findings"].back();
  EXPECT_EQ(finding["line"], 2);
  EXPECT_EQ(finding["column"], 13);
  EXPECT_EQ(finding["endLine"], 3);
  EXPECT_EQ(finding["endColumn"], 2);
  EXPECT_EQ(finding["byte"], 61);
  EXPECT_EQ(finding["endByte"], 64);
}

TEST(CheckToolSarif, ATextOfTheDocumentStandsForNoOtherText) {
  const Json log =
      Json::parse(check(widget("<icon src='a' width='{0} [a](b)'/>"), {"--format", "sarif"}).out);
  EXPECT_THAT(log["runs"][0]["results"][0]["message"]["text"].get<std::string>(),
              StartsWith("icon: width=\"{{0}} \\[a\\](b)\": "));
}

// The fingerprints of code scanning, which takes them of the file.
TEST(CheckToolSarif, HashesTheLineAsCodeScanningDoes) {
  const Row rows[] = {{"", "c129715d7a2bc9a3:1"},
                      {" a\nb\n  \t\tc\n d", "271789c17abda88f:1"},
                      {" hello; \t\nworld!!!\n\n\n  \t\tGreetings\n End", "8b7cf3e952e7aeb2:1"}};
  const auto hashOf = [](const std::string& document) {
    const Json log = Json::parse(check(document, {"--format", "sarif"}).out);
    return log["runs"][0]["results"]
        .back()["partialFingerprints"]["primaryLocationLineHash"]
        .get<std::string>();
  };
  expectRows(rows, hashOf);
  // Ends of lines and blanks do not count, what stands in the line does.
  const std::string children = "<name>a</name>\r\n\t<icon width='1'/>\r\n";
  const std::string before = hashOf(widget(children));
  EXPECT_EQ(hashOf(widget("\n<x xmlns='urn:x'/>\n<name>a</name>\n<icon  width='1'/>\n")), before);
  EXPECT_NE(hashOf(widget("<name>a</name>\n<icon width='2'/>\n")), before);
}

/// A document with the edits made that its findings have.
std::string fixedBy(std::string document, const Json& finding) {
  std::vector<Json> edits = finding["fixes"][0]["edits"];
  std::sort(edits.begin(), edits.end(),
            [](const Json& left, const Json& right) { return left["byte"] > right["byte"]; });
  for (const Json& edit : edits) {
    document.replace(edit["byte"],
                     edit["endByte"].get<std::size_t>() - edit["byte"].get<std::size_t>(),
                     edit["text"].get<std::string>());
  }
  return document;
}

TEST(CheckToolFixes, ReachProgramsWithTheirEdits) {
  const std::string document = "\xEF\xBB\xBF" + widget("\n<Icon src='\xC3\xA9'\n></Icon>{}");
  const Json json = Json::parse(check(document, {"--format", "json"}).out);
  const Json& findings = json["files"][0]["findings"];
  ASSERT_EQ(findings.size(), 2U);
  EXPECT_EQ(findings[1]["fixes"], Json::array());
  EXPECT_EQ(fixedBy(document, findings[0]),
            "\xEF\xBB\xBF" + widget("\n<icon src='\xC3\xA9'\n></icon>{}"));
  const Json log = Json::parse(check(document, {"--format", "sarif"}).out);
  const Json& results = log["runs"][0]["results"];
  EXPECT_FALSE(results[1].contains("fixes"));
  const Json& change = results[0]["fixes"][0]["artifactChanges"][0];
  EXPECT_EQ(change["artifactLocation"],
            results[0]["locations"][0]["physicalLocation"]["artifactLocation"]);
  EXPECT_EQ(change["replacements"][1]["insertedContent"]["text"], "icon");
  EXPECT_EQ(change["replacements"][1]["deletedRegion"]["startLine"], 3);
  EXPECT_EQ(change["replacements"][1]["deletedRegion"]["startColumn"], 4);
}

TEST(CheckToolSarif, KnowsAFindingAgainWhenLinesMove) {
  const auto prints = [](const std::string& children) {
    std::vector<std::string> all;
    const Json log = Json::parse(check(widget(children), {"--format", "sarif"}).out);
    for (const Json& result : log["runs"][0]["results"]) {
      all.push_back(result["partialFingerprints"]["finding/v1"]);
    }
    return all;
  };
  const auto before = prints("<icon/><icon/><icon src='a' widht='1'/>");
  EXPECT_EQ(std::set<std::string>(before.begin(), before.end()).size(), 3U);
  EXPECT_EQ(prints("\n<name/>\n <icon/><icon/>\n<icon src='a' widht='1'/>"), before);
  EXPECT_NE(prints("<icon/><icon/><icon src='a' widht='2'/>"), before);
}

TEST(CheckToolCodes, AreListedAndExplained) {
  EXPECT_THAT(run({"check", "--codes"}).out,
              HasSubstr("\npartial-number          warning  Only the beginning "));
  const Outcome outcome = run({"check", "--explain", "partial-number"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(
      outcome.out,
      "partial-number (warning)\n\nOnly the beginning of a value is a number; the rest, such as "
      "a unit, is ignored.\n\nBad:\n\n    <icon src=\"map.png\" width=\"48px\"/>\n\n"
      "Fixed:\n\n    <icon src=\"map.png\" width=\"48\"/>\n");
  EXPECT_THAT(run({"check", "--explain", "foreign-element"}).out,
              testing::EndsWith("\n\nFixed: without it.\n"));
}

TEST(CheckTool, RejectsWrongUsage) {
  const std::vector<std::string> cases[] = {
      {},
      {"--format", "yaml", "-"},
      {"--explain", "nothing"},
      {"--explain", "partial-number", "-"},
      {"--codes", "-"},
      {"--summary", "--format", "sarif", "-"},
      {"--codes", "--explain", "partial-number"},
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
