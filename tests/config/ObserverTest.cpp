// What a parser reports to its observer, and that nothing else changes for it. A host of its own:
// it takes the lines that go to syslog.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "check/FindingCode.h"
#include "tests/support/Checks.h"
#include "tests/support/ConfigReader.h"
#include "tests/support/FakeSyslog.h"
#include "tests/support/Findings.h"
#include "tests/support/RecordDump.h"
#include "util/HostSymbols.h"

extern "C" __attribute__((visibility("default"))) int corvel_get_int(const char* /*group*/,
                                                                     const char* /*name*/,
                                                                     int* /*status*/,
                                                                     int /*defaultValue*/) {
  return 300;
}

namespace orvane::nimbrel::config {
namespace {

using namespace test;
using namespace testing;

/// What is reported of a widget with these children, to a user for English. A second document of
/// the same parser gives the same, but for its start file.
std::string reported(const std::string& children) {
  Reader reader;
  const auto readOnce = [&] {
    const auto findings = std::make_shared<Findings>();
    reader.setObserver(findings);
    try {
      reader.read(children);
    } catch (const std::exception& rejection) {
      findings->lines.push_back(rejection.what());
    }
    std::string all;
    for (const std::string& line : findings->lines) {
      all += (all.empty() ? "" : " | ") + line;
    }
    return all;
  };
  const std::string all = readOnce();
  if (children.find("<content") == std::string::npos) {
    EXPECT_EQ(readOnce(), all) << children;
  }
  return all;
}

// The Widgets recommendation names these as invalid; all but the one that is required are ignored.
TEST(Observer, LearnsOfEachCaseThatTheW3CCallsInvalid) {
  const Row rows[] = {
      {"<name>a</name><name>b</name>", "1 repeated name"},
      {"<description>a</description><description/>", "1 repeated description"},
      {"<license/><license/>", "1 repeated license"},
      {"<license href='not a valid IRI'/>", "1 not-an-iri license@href='not a valid IRI'"},
      {"<author href='.invalid'/>", "1 not-an-iri author@href='.invalid'"},
      {"<author/><author/>", "1 repeated author"},
      {"<icon/>", "1 missing-attribute icon@src"},
      {"<icon src='a'/><icon src='a'/>", "1 repeated icon@src='a'"},
      {"<icon src='a' width='invalid'/>", "1 not-a-number icon@width='invalid'"},
      {"<content/>", "1 missing-attribute content@src"},
      {"<content src='a'/><content src='b'/>", "1 repeated content"},
      {"<feature name='invalid' required='false'/>", "1 not-an-iri feature@name='invalid'"},
      {"<feature name='invalid'/>",
       "1 required-feature-name feature@name='invalid' | Feature name is not a valid IRI."},
      {"<feature required='false'/>", "1 missing-attribute feature@name"},
      {"<feature name='a:a' required='invalid'/>", "1 not-a-boolean feature@required='invalid'"},
      {"<feature name='a:a'><param name='a'/><param value='a'/></feature>",
       "1 missing-attribute param@value | 1 missing-attribute param@name"},
      {"<preference value='a'/>", "1 missing-attribute preference@name"},
      {"<preference name='a'/><preference name='a'/>", "1 repeated preference@name='a'"},
      {"<preference name='a' readonly='x'/>", "1 not-a-boolean preference@readonly='x'"},
      {"<access/>", "1 missing-attribute access@origin"},
      {"<access origin='invalid'/>", "1 not-an-origin access@origin='invalid'"},
      {"<access origin='http://a.example/path'/>",
       "1 not-an-origin access@origin='http://a.example/path'"},
      {"<access origin='http://a.example' subdomains='x'/>",
       "1 not-a-boolean access@subdomains='x'"},
      {"<access origin='mailto:a@a.example'/>",
       "1 not-an-origin access@origin='mailto:a@a.example'"},
      {"<access origin='ftp://a.example'/>", "1 not-an-origin access@origin='ftp://a.example'"},
  };
  expectRows(rows, reported);
}

TEST(Observer, LearnsWhatExtensionElementsIgnore) {
  const Row rows[] = {
      {extension("cookiejar", asset("persistent", "true") + asset("persistent", "false") +
                                  asset("persistent", "TRUE") + asset("x", "true")),
       "1 repeated asset@value='false' | 1 unknown-word asset@value='TRUE' | 1 repeated "
       "asset@value='TRUE' | 1 unknown-key asset@key='x'"},
      {extension("auth", asset("k", "Token") + asset("k", "")),
       "1 unknown-word asset@value='Token' | 1 unknown-word asset@value=''"},
      {extension("network", asset("enableCaching", "yes") + "<tavlo:errorPage/>" + asset("a", "b")),
       "1 unknown-word asset@value='yes' | 1 missing-attribute errorPage@src"},
      {extension("network", "<tavlo:x/>" + asset("a", "b")), "1 unexpected-child x"},
      {extension("settings", named("setting", "saveContext", "no") +
                                 named("setting", "saveContext", "yes") +
                                 named("setting", "zoomFactor", "0") + "<tavlo:setting name='a'/>"),
       "1 repeated setting@value='yes' | 1 out-of-range setting@value='0' | 1 missing-attribute "
       "setting@value"},
      {extension("settings", named("setting", "defaultFontSize300", "2") +
                                 named("setting", "defaultFontSize", "2") +
                                 named("setting", "defaultFontSize96", "2") +
                                 named("setting", "defaultFontSizes", "2")),
       "1 unused-setting setting@name='defaultFontSize' | 1 unknown-key "
       "setting@name='defaultFontSizes'"},
      {extension("gestures", named("param", "tap", "yes") + named("param", "tap", "no")),
       "1 repeated param@value='no'"},
      {extension("resources", asset("ApplicationCacheLoadDelay", "-1") + asset("own", "x") +
                                  asset("DatabaseStorageQuota", "")),
       "1 out-of-range asset@value='-1' | 1 number-rejected asset@value='' | input"},
      {"<tavlo:export resource='a'/><tavlo:export resource='a'/><tavlo:export/>",
       "1 repeated export@resource='a' | 1 missing-attribute export@resource"},
      {"<Name/><o:x xmlns:o='urn:o'/>", "1 unknown-element Name | 1 unknown-element x"},
      // Nothing is wrong with these, or there is nothing to decide.
      {extension("cookiejar", asset("persistent", "true") + asset("persistent", "true")) +
           extension("messaging", named("app", "a", "yes") + named("app", "a", "false")) +
           "<param name='a'/><name xml:lang='fr'/><icon src='a' scr='b'/>",
       ""},
  };
  expectRows(rows, reported);
}

TEST(Observer, LearnsWhereAndWhyADocumentIsRejected) {
  const auto findings = std::make_shared<Findings>();
  Reader reader;
  reader.setObserver(findings);
  for (const char* document : {"<a>\n</b>", "<w xmlns='http://www.w3.org/ns/widgets'/>"}) {
    EXPECT_THROW(reader.document(document), ConfigParser::ConfigException);
  }
  EXPECT_THAT(findings->lines,
              ElementsAre(StartsWith("2 document-rejected : Opening"), "1 wrong-root w"));
}

TEST(Observer, MayEndTheParseAndMayBeTakenAway) {
  class Thrower : public ParseObserver {
    void onFinding(const config::Finding& /*finding*/) override {
      throw std::runtime_error("enough");
    }
  };
  Reader bare;
  bare.read("");
  Reader reader;
  for (const std::string element :
       {"icon src='a' width='x'", "preference name='a' readonly='x'", "license href='x'",
        "author href='x'", "feature name='x' required='false'", "access origin='x'", "content"}) {
    SCOPED_TRACE(element);
    reader.setObserver(std::make_shared<Thrower>());
    EXPECT_EQ(thrownBy<std::runtime_error>([&] { reader.read("<" + element + "/>"); }), "enough");
    reader.record().elements().clear();
    EXPECT_EQ(difference(dumpOf(reader.record()), dumpOf(bare.record())), "");
    reader.setObserver(nullptr);
    EXPECT_TRUE(reader.read("<" + element + "/><name>a</name>")->getName());
  }
  // The element that was without a path counts.
  EXPECT_FALSE(reader.read("<content src='a'/>")->getStartFile());
}

// With sanitizers this finds a parser that looks at nodes of a document that its host has let go.
TEST(Observer, LearnsOfALaterStartFileWhenTheRecordWasReplaced) {
  class Host : public Reader {
   public:
    void replaceRecord() { config = std::make_shared<BasicConfig>(); }
  };
  const auto findings = std::make_shared<Findings>();
  Host host;
  host.setObserver(findings);
  host.read("<content src='a'/>");
  host.replaceRecord();
  host.processContent(rootOf("<content src='b'/>"));
  host.read("<content src='a'/>");
  EXPECT_THAT(findings->lines, ElementsAre("1 repeated content", "1 repeated content"));
}

/// All that a parse leaves: record or rejection, error text, log lines.
std::string traceOf(const std::string& document, const std::shared_ptr<ParseObserver>& observer) {
  logged().lines.clear();
  g_quillo_log_mask = util::LOG_MASK_DEBUG;
  Reader reader({"en", "*", "de"});
  reader.setObserver(observer);
  std::string trace;
  try {
    reader.document(document);
  } catch (const ConfigParser::ConfigException& rejection) {
    trace =
        std::to_string(rejection.line) + ":" + std::to_string(rejection.column) + rejection.what();
  } catch (const std::logic_error& rejection) {
    trace = rejection.what();
  } catch (const std::overflow_error& rejection) {
    trace = rejection.what();
  }
  // No document, no record of its own.
  trace += reader.hasRecord() ? dumpOf(reader.record()) : "";
  trace += reader.getErrorText();
  for (const std::string& line : logged().lines) {
    trace += "\n" + line;
  }
  g_quillo_log_mask = 0;
  return trace;
}

TEST(Observer, ChangesNothing) {
  std::vector<std::string> documents;
  for (const check::CodeDescription& kind : check::codeDescriptions()) {
    documents.push_back(kind.bad.substr(0, 7) == "<widget" ? std::string(kind.bad)
                                                           : widget(std::string(kind.bad)));
  }
  for (const char* folder : {NIMBREL_EXAMPLES, NIMBREL_TEST_DATA, NIMBREL_FUZZ_SEEDS}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
      if (!entry.is_regular_file()) {
        continue;
      }
      std::ifstream file(entry.path(), std::ios::binary);
      const std::string bytes{std::istreambuf_iterator<char>(file), {}};
      documents.push_back(bytes);
      // Seeds have a line before the document.
      documents.push_back(bytes.substr(bytes.find('\n') + 1));
    }
  }
  EXPECT_GT(documents.size(), 60U);
  std::size_t reports = 0;
  for (const std::string& document : documents) {
    const auto findings = std::make_shared<Findings>();
    ASSERT_EQ(difference(traceOf(document, findings), traceOf(document, nullptr)), "") << document;
    reports += findings->lines.size();
  }
  EXPECT_GT(reports, 80U);
}

}  // namespace
}  // namespace orvane::nimbrel::config
