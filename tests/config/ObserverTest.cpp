// What the observer of a parse is told, and that nothing else changes for it. A host of its own: it
// takes the lines that go to syslog.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "config/FindingKind.h"
#include "tests/support/Checks.h"
#include "tests/support/ConfigReader.h"
#include "tests/support/FakeSyslog.h"
#include "tests/support/Findings.h"
#include "tests/support/RecordDump.h"
#include "util/Log.h"

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

/// What is told of a whole document, for a user of these languages.
std::shared_ptr<Findings> findingsOf(const std::string& document,
                                     const std::vector<std::string>& locales = {"en", "de"}) {
  const auto findings = std::make_shared<Findings>();
  Reader reader(locales);
  reader.setObserver(findings);
  try {
    reader.document(document);
  } catch (const std::exception&) {
    EXPECT_EQ(findingKind(findings->codes.at(findings->codes.size() - 1)).level,
              FindingLevel::ERROR);
  }
  return findings;
}

std::string documentOf(std::string_view example) {
  return example.substr(0, 7) == "<widget" ? std::string(example) : widget(std::string(example));
}

TEST(FindingKinds, HaveExamplesThatGiveThemAndMendedOnesThatDoNot) {
  for (const FindingKind& kind : findingKinds()) {
    SCOPED_TRACE(kind.name);
    EXPECT_EQ(&findingKind(kind.code) - &findingKind(LegacyCode::DOCUMENT_REFUSED),
              static_cast<int>(kind.code));
    EXPECT_THAT(findingsOf(documentOf(kind.bad))->codes, Contains(kind.code));
    EXPECT_THAT(findingsOf(documentOf(kind.mended))->lines, IsEmpty());
  }
}

/// The one or two findings of a widget with these children, without line and element.
std::string told(const std::string& children) {
  std::string all;
  const auto findings = findingsOf(widget(children));
  for (const std::string& line : findings->lines) {
    all += (all.empty() ? "" : " | ") + line.substr(line.find(' ') + 1);
  }
  return all;
}

TEST(Observer, IsToldWhatWhereAndWhyOfTheW3CElements) {
  const Row rows[] = {
      {"<icon src='a' width='0' height='4294967296'/>",
       "number-dropped icon@height='4294967296': The largest number is 4294967295. | "
       "number-dropped icon@width='0': A size is a number above 0, without a sign."},
      {"<icon src='a' width='' height='1 2'/>",
       "number-cut icon@height='1 2': White space between digits does not count: 12 is taken. | "
       "number-dropped icon@width='': An empty value is no number."},
      {"<icon src='a' width='480px'/>",
       "number-cut icon@width='480px': The number ends before the first character that is no "
       "digit: 480 is taken."},
      {"<icon scr='a'/>",
       "unknown-attribute icon@scr='a': Nothing reads this attribute. -> src | "
       "icon-without-src icon@src: An icon needs a path."},
      {"<icon tavlo:src='a' src='b' xmlns:o='urn:o' o:src='c'/>",
       "unknown-attribute icon@tavlo:src='a': Nothing reads this attribute. -> src"},
      {"<name dir='Rtl'>a<b dir='up'/></name>",
       "unknown-direction name@dir='Rtl': It is no direction and counts as absent. -> rtl | "
       "unknown-direction b@dir='up': It is no direction: that of the element around it applies."},
      {"<preference name='a' readonly='NO'/>",
       "not-boolean preference@readonly='NO': The preference can be written. -> false"},
      {"<feature name='urn:f' required='Yes'/>",
       "not-boolean feature@required='Yes': The feature is required. -> true"},
      {"<feature name='urn:f'><tavlo:param/><param name='' value='v'/></feature>",
       "unknown-element tavlo:param: A feature has only params. -> param | "
       "param-incomplete param@name='': A parameter needs a name."},
      {"<access origin='http://a.example:81/x?y'/>",
       "origin-too-long access@origin='http://a.example:81/x?y': Only scheme, host and port make "
       "an origin, without so much as a final slash. -> http://a.example:81"},
      {"<access origin='http://u@a.example'/>",
       "origin-too-long access@origin='http://u@a.example': Only scheme, host and port make an "
       "origin, without so much as a final slash."},
      {"<access origin='http://a.example' subdomains='1'/>",
       "not-boolean access@subdomains='1': It is left open whom to let in: the request is left "
       "out."},
      {"<content/><content src='a'/>",
       "content-without-src content@src: Without a path there is no start file, whatever follows. "
       "| repeated-element content: Only the first one counts, good or bad."},
      {"<author xml:lang='de'/><author href='x'/>",
       "better-language author: The user prefers the language of another one."},
      {"<Name/>", "unknown-element Name: No element of this name is known here. -> name"},
      {"<authr/>", "unknown-element authr: No element of this name is known here."},
      {"<settings/>",
       "unknown-element settings: No element of this name is known here. -> tavlo:settings"},
      {"<name xmlns=''/>", "unknown-element name: The element is in no namespace. -> name"},
      {"<name xmlns='http://www.w3.org/ns/widget'/>",
       "unknown-element name@xmlns='http://www.w3.org/ns/widget': The namespace is not a known "
       "one. -> http://www.w3.org/ns/widgets"},
  };
  expectRows(rows, told);
}

TEST(Observer, IsToldWhatWhereAndWhyOfTheExtensionElements) {
  const std::string replaced = ": The later value replaces the earlier one.";
  const std::string yesOnly = ": Only \"yes\" has an effect, any other value none.";
  const Row rows[] = {
      {extension("cookiejar", asset("persistent", "TRUE") + asset("useAuthCookie", "true")),
       "unknown-word tavlo:asset@value='TRUE': Only \"true\" raises the flag: any other value "
       "leaves it as it was. -> true | unknown-key tavlo:asset@key='useAuthCookie': Nothing is "
       "known by this name. -> useAuthCookies"},
      {extension("cookiejar", asset("persistent", "true") + asset("persistent", "false")),
       "repeated-key tavlo:asset@value='false': A flag once raised stays so."},
      {extension("auth", asset("k", "Token")),
       "unknown-word tavlo:asset@value='Token': Only \"token\" is known; the error text tells of "
       "it."},
      {extension("network", asset("maxConnections", "1O") + asset("maxConnections", "2") +
                                asset("user-agent", "a") + asset("user-agent", "b")),
       "number-cut tavlo:asset@value='1O': The number ends before the first character that is no "
       "digit: 1 is taken. | repeated-key tavlo:asset@key='maxConnections'" +
           replaced},
      {extension("network", "<tavlo:errorpage src='a'/>" + asset("enableCaching", "yes")),
       "unexpected-child tavlo:errorpage: Only <tavlo:asset> and <tavlo:errorPage> may stand here: "
       "the parent is read no further. -> tavlo:errorPage | not-reached tavlo:asset: An earlier "
       "child is faulty: this one is not read."},
      {extension("network", asset("enableCaching", "yes")),
       "unknown-word tavlo:asset@value='yes': Only \"true\" switches it on; all else switches it "
       "off. -> true"},
      {extension("network", asset("maxConnections", "4294967296")),
       "counter-refused tavlo:asset@value='4294967296': The largest number is 4294967295."},
      {extension("settings", named("setting", "debug", "true") +
                                 named("setting", "saveContext", "false") +
                                 named("setting", "saveContext", "yes") +
                                 named("setting", "inspector", "maybe")),
       "unknown-word tavlo:setting@value='true'" + yesOnly +
           " -> yes | unknown-word tavlo:setting@value='false': Only \"no\" has an effect, any "
           "other value none. -> no | repeated-key tavlo:setting@name='saveContext': It is thrown "
           "if one of them throws it. | unknown-word tavlo:setting@value='maybe'" +
           yesOnly},
      {extension("settings", named("setting", "zoomFactor", "1,5") +
                                 named("setting", "minimumFontSize", "9pt") +
                                 named("setting", "defaultFontSize", "x") +
                                 named("setting", "defaultFontSize300", "22")),
       "number-cut tavlo:setting@value='1,5': The number ends before the first character that "
       "cannot continue it: 1 is taken. | number-cut tavlo:setting@value='9pt': The number ends "
       "before the first character that cannot continue it: 9 is taken. | value-refused "
       "tavlo:setting@value='x': A font size is at least 1."},
      {extension("chrome", asset("configureSearchBar", "a") + asset("configuresearchbar", "a")) +
           extension("chrome", ""),
       "unknown-key tavlo:asset@key='configuresearchbar': Nothing is known by this name. -> "
       "configureSearchBar | settings-restarted tavlo:chrome: It puts aside what an earlier one "
       "set."},
      {extension("gestures", named("param", "tap", "true") + named("param", "hold", "yes") +
                                 named("param", "hold", "no")),
       "unknown-word tavlo:param@value='true': Only \"yes\" switches the gesture on. -> yes | "
       "repeated-key tavlo:param@value='no': A gesture once switched on stays so."},
      {extension("permissions", named("permission", "a", "No") + "<tavlo:permission name='a'/>"),
       "unknown-word tavlo:permission@value='No': The permission is granted: only \"no\" and "
       "\"false\" refuse it. -> no | repeated-key tavlo:permission@name='a'" +
           replaced},
      {extension("messaging", named("app", "a", "on") + named("app", "b", "false")),
       "unknown-word tavlo:app@value='on': Messages are refused: only \"yes\" and \"true\" grant "
       "them."},
      {extension("resources", asset("LocalStorageQuota", "10MB") +
                                  asset("ApplicationCacheLoadDelay", "-1") +
                                  asset("DatabaseStorag", "yes") + asset("Own", "x")),
       "number-cut tavlo:asset@value='10MB': The number ends before the first character that is no "
       "digit: 10 is taken. | value-refused tavlo:asset@value='-1': A delay is not negative. | "
       "similar-key tavlo:asset@key='DatabaseStorag': It is kept among the settings without "
       "meaning. -> DatabaseStorage"},
      {"<tavlo:name/>",
       "unknown-element tavlo:name: No element of this name is known here. -> name"},
  };
  expectRows(rows, told);
}

TEST(Observer, IsToldOfTheRootAndOfLinesAndOfNothingTwice) {
  const std::string document = widget(
      "\n<name xml:lang='fr'>n</name>\n\n<icon\nwidth='1'/>",
      "Version='1' applicationid='x' tavlo:applicationVersion='1.2' id='no iri' defaultlocale=''");
  EXPECT_THAT(
      findingsOf(document, {"*"})->lines,
      ElementsAre(
          "1 unknown-attribute widget@Version='1': Nothing reads this attribute. -> version",
          "1 unknown-attribute widget@applicationid='x': Nothing reads this attribute. -> "
          "tavlo:applicationId",
          "1 defaultlocale-empty widget@defaultlocale='': An empty value names no language.",
          "1 id-not-iri widget@id='no iri': It is no IRI, which begins with a scheme.",
          "1 number-cut widget@tavlo:applicationVersion='1.2': The number ends before the first "
          "character that is no digit: 1 is taken.",
          "2 language-lost name@xml:lang='fr': The user does not ask for this language, and no "
          "other one stands in.",
          "4 icon-without-src icon@src: An icon needs a path."));
  EXPECT_THAT(findingsOf("<w xmlns='http://www.w3.org/ns/widgets'/>")->lines,
              ElementsAre("1 root-not-widget w: The root is to be a widget. -> widget"));
  EXPECT_THAT(findingsOf("<a>\n</b>")->lines, ElementsAre(StartsWith("2 document-refused : ")));
}

// The Widgets recommendation names these as invalid; all are dropped in silence.
TEST(Observer, IsToldOfEachCaseThatTheW3CCallsInvalid) {
  const std::pair<std::string, std::vector<LegacyCode>> rows[] = {
      {"<name>a</name><name>b</name>", {LegacyCode::REPEATED_ELEMENT}},
      {"<description>a</description><description/>", {LegacyCode::REPEATED_ELEMENT}},
      {"<license/><license/>", {LegacyCode::REPEATED_ELEMENT}},
      {"<license href='not a valid IRI'/>", {LegacyCode::HREF_NOT_IRI}},
      {"<author href='.invalid'/>", {LegacyCode::HREF_NOT_IRI}},
      {"<author/><author/>", {LegacyCode::REPEATED_ELEMENT}},
      {"<icon/>", {LegacyCode::ICON_WITHOUT_SRC}},
      {"<icon src='a'/><icon src='a'/>", {LegacyCode::REPEATED_ICON}},
      {"<icon src='a' width='invalid' height='-100'/>",
       {LegacyCode::NUMBER_DROPPED, LegacyCode::NUMBER_DROPPED}},
      {"<content/>", {LegacyCode::CONTENT_WITHOUT_SRC}},
      {"<content src='a'/><content src='b'/>", {LegacyCode::REPEATED_ELEMENT}},
      {"<feature name='invalid' required='false'/>", {LegacyCode::FEATURE_NAME}},
      {"<feature name='invalid'/>", {LegacyCode::REQUIRED_FEATURE_NAME}},
      {"<feature required='false'/>", {LegacyCode::FEATURE_WITHOUT_NAME}},
      {"<feature name='a:a' required='invalid'/>", {LegacyCode::NOT_BOOLEAN}},
      {"<feature name='a:a'><param name='a'/><param value='a'/></feature>",
       {LegacyCode::PARAM_INCOMPLETE, LegacyCode::PARAM_INCOMPLETE}},
      {"<param name='a' value='b'/>", {LegacyCode::PARAM_OUTSIDE_FEATURE}},
      {"<preference value='a'/>", {LegacyCode::PREFERENCE_WITHOUT_NAME}},
      {"<preference name='a'/><preference name='a'/>", {LegacyCode::REPEATED_PREFERENCE}},
      {"<preference name='a' readonly='invalid'/>", {LegacyCode::NOT_BOOLEAN}},
      {"<access/>", {LegacyCode::ACCESS_WITHOUT_ORIGIN}},
      {"<access origin='invalid'/>", {LegacyCode::ORIGIN_NOT_IRI}},
      {"<access origin='http://a.example/path'/>", {LegacyCode::ORIGIN_TOO_LONG}},
      {"<access origin='http://a.example' subdomains='invalid'/>", {LegacyCode::NOT_BOOLEAN}},
      {"<access origin='mailto:a@a.example'/>", {LegacyCode::ORIGIN_WITHOUT_HOST}},
      {"<access origin='ftp://a.example'/>", {LegacyCode::ORIGIN_WITHOUT_PORT}},
  };
  for (const auto& [children, codes] : rows) {
    EXPECT_EQ(findingsOf(widget(children))->codes, codes) << children;
  }
}

TEST(Observer, MayEndTheParseAndMayBeTakenAway) {
  class Thrower : public ParseObserver {
    void onFinding(const config::Finding& /*finding*/) override {
      throw std::runtime_error("enough");
    }
  };
  Reader reader;
  reader.setObserver(std::make_shared<Thrower>());
  EXPECT_EQ(thrownBy<std::runtime_error>([&] { reader.read("<icon/>"); }), "enough");
  EXPECT_TRUE(reader.read("<icon src='a'/>"));
  reader.setObserver(nullptr);
  EXPECT_TRUE(reader.read("<icon/>"));
}

TEST(Observer, IsToldThatAParserKeepsToAnEarlierStartFile) {
  const auto findings = std::make_shared<Findings>();
  Reader reader;
  reader.setObserver(findings);
  reader.read("<content src='a'/>");
  reader.read("<content src='a'/>");
  EXPECT_THAT(findings->lines,
              ElementsAre("1 repeated-element content: An earlier document had one, and the parser "
                          "keeps to it."));
}

/// All that a parse leaves: record or refusal, error text, log lines.
std::string traceOf(const std::string& document, const std::shared_ptr<ParseObserver>& observer) {
  logged().lines.clear();
  g_quillo_log_mask = util::LOG_MASK_DEBUG;
  Reader reader({"en", "*", "de"});
  reader.setObserver(observer);
  std::string trace;
  try {
    reader.document(document);
  } catch (const ConfigParser::ConfigException& refusal) {
    trace = std::to_string(refusal.line) + ":" + std::to_string(refusal.column) + refusal.what();
  } catch (const std::logic_error& refusal) {
    trace = refusal.what();
  } catch (const std::overflow_error& refusal) {
    trace = refusal.what();
  }
  // No document, no record of its own.
  trace += reader.hasRecord() ? RecordDump::of(reader.record()) : "";
  trace += reader.getErrorText();
  for (const std::string& line : logged().lines) {
    trace += "\n" + line;
  }
  g_quillo_log_mask = 0;
  return trace;
}

TEST(Observer, ChangesNothing) {
  std::vector<std::string> documents;
  for (const FindingKind& kind : findingKinds()) {
    documents.push_back(documentOf(kind.bad));
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
  EXPECT_GT(documents.size(), 80U);
  std::size_t told = 0;
  for (const std::string& document : documents) {
    const auto findings = std::make_shared<Findings>();
    ASSERT_EQ(traceOf(document, nullptr), traceOf(document, findings)) << document;
    told += findings->lines.size();
  }
  EXPECT_GT(told, 100U);
}

}  // namespace
}  // namespace orvane::nimbrel::config
