// What is found in documents, by a table in a file: tests/data/findings.txt says how it is written.
// With NIMBREL_UPDATE_DOCS set in the environment this test rewrites the findings there.

#include <gmock/gmock.h>

#include <cstdlib>
#include <sstream>

#include "tests/check/FindingLines.h"
#include "tests/support/Checks.h"
#include "tests/support/ConfigReader.h"
#include "util/HostSymbols.h"

extern "C" __attribute__((visibility("default"))) int corvel_get_int(const char* /*group*/,
                                                                     const char* /*name*/,
                                                                     int* /*status*/,
                                                                     int /*defaultValue*/) {
  return 300;
}

namespace orvane::nimbrel::check {
namespace {

constexpr char TABLE[] = NIMBREL_TEST_DATA "/findings.txt";

/// The words between `begin` and `end`, if the text begins so; it then goes on behind them.
std::optional<std::vector<std::string>> takeList(std::string& text, const std::string& begin,
                                                 char separator, const std::string& end) {
  if (text.substr(0, begin.size()) != begin) {
    return std::nullopt;
  }
  std::istringstream list(text.substr(begin.size(), text.find(end) - begin.size()));
  text.erase(0, text.find(end) + end.size());
  std::vector<std::string> words;
  for (std::string word; std::getline(list, word, separator);) {
    words.push_back(word);
  }
  return words;
}

/// The package of a list of names, of which "map.png@" is a symbolic link, and "+7" no name but a
/// number of bytes that belong to no entry.
std::optional<PackageContents> packageOf(const std::optional<std::vector<std::string>>& list) {
  if (!list) {
    return std::nullopt;
  }
  PackageContents package;
  for (std::string name : *list) {
    if (name.front() == '+') {
      package.unlistedBytes = std::stoul(name);
      continue;
    }
    if (name.back() == '@') {
      name.pop_back();
      package.links.push_back(name);
    }
    package.names.push_back(name);
  }
  return package;
}

/// What is found in a document of the table, written as there.
std::string findingsOf(std::string row) {
  const auto package = packageOf(takeList(row, "{", '|', "}"));
  const auto locales = takeList(row, "[", ' ', "]");
  std::string all;
  for (const std::string& line : linesOf(documentOf(row), locales, package)) {
    all += "  " + line + '\n';
  }
  return all;
}

TEST(FindingsTable, HoldsForEachDocument) {
  std::istringstream table(test::contentOf(TABLE));
  std::string actualTable;
  std::string expected;
  std::string document;
  std::size_t count = 0;
  const auto finish = [&] {
    if (!document.empty()) {
      const std::string actual = findingsOf(document);
      EXPECT_EQ(actual, expected) << document;
      actualTable += actual;
      ++count;
    }
    expected.clear();
    document.clear();
  };
  for (std::string line; std::getline(table, line);) {
    if (line.substr(0, 2) == "  ") {
      expected += line + '\n';
      continue;
    }
    finish();
    actualTable += line + '\n';
    document = line.empty() || line.front() == '#' ? "" : line;
  }
  finish();
  EXPECT_GT(count, 110U);
  if (std::getenv("NIMBREL_UPDATE_DOCS") != nullptr) {
    std::ofstream out(TABLE);
    EXPECT_TRUE(out << actualTable << std::flush);
  }
}

TEST(Check, IsSilentOnTheExample) {
  const std::string document = test::contentOf(NIMBREL_EXAMPLES "/config.xml");
  EXPECT_THAT(linesOf(document), testing::IsEmpty());
  for (const char* language : {"en", "de", "he"}) {
    const std::vector<std::string> lines = linesOf(document, {{language}});
    EXPECT_THAT(lines, testing::Each(testing::HasSubstr(" other-language ")));
    // The example has texts in three languages, of which this user gets one.
    EXPECT_THAT(lines, testing::Contains(testing::HasSubstr(" other-language name")));
  }
}

TEST(Check, LeavesTheLogAsItWas) {
  const std::string debug =
      test::widget(test::extension("settings", test::named("setting", "debug", "yes")));
  static_cast<void>(checkDocument(debug));
  EXPECT_EQ(util::logMask(), 0U);
  // What a document on another thread has switched on for a moment does not stay.
  util::setLogMask(util::LOG_MASK_DEBUG);
  static_cast<void>(checkDocument(debug, {std::nullopt, 0}));
  EXPECT_EQ(util::logMask(), 0U);
  util::setLogMask(0);
}

TEST(Kinds, HaveExamplesThatGiveThemAndFixedOnesThatDoNot) {
  for (const CodeDescription& kind : codeDescriptions()) {
    SCOPED_TRACE(kind.name);
    if (kind.code == FindingCode::UNUSABLE_PACKAGE) {
      continue;  // the tool finds it, which reads archives
    }
    std::vector<std::string> codes;
    std::string bad(kind.bad);
    std::string fixed(kind.fixed);
    const auto package = packageOf(takeList(bad, "<!-- package: ", ' ', "-->"));
    const auto report = checkDocument(documentOf(bad), {std::nullopt, 0, package});
    for (const Diagnostic& finding : report->findings()) {
      codes.emplace_back(descriptionOf(finding.code).name);
    }
    EXPECT_THAT(codes, testing::Contains(kind.name));
    const auto fixedPackage = packageOf(takeList(fixed, "<!-- package: ", ' ', "-->"));
    EXPECT_THAT(linesOf(documentOf(fixed), std::nullopt, fixedPackage), testing::IsEmpty());
  }
}

}  // namespace
}  // namespace orvane::nimbrel::check
