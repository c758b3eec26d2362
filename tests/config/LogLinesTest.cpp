// A host of its own: it brings the data and the query that a host process brings, and takes the
// lines that go to syslog.

#include <gmock/gmock.h>

#include "tests/support/Checks.h"
#include "tests/support/ConfigReader.h"
#include "tests/support/FakeSyslog.h"
#include "util/Log.h"
#include "util/StringUtil.h"

namespace {

struct Density {
  int status;  // 0: known
  int value;
};

/// The answers to come; the last one stays.
std::vector<Density>& densities() {
  static std::vector<Density> answers;
  return answers;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int corvel_get_int(const char* group,
                                                                     const char* name, int* status,
                                                                     int defaultValue) {
  EXPECT_EQ(std::string(group) + "/" + name, "screen/dpi");
  EXPECT_EQ(*status, 0);
  EXPECT_EQ(defaultValue, 0);
  orvane::nimbrel::test::logged().lines.emplace_back("density");
  const Density answer = densities().front();
  if (densities().size() > 1) {
    densities().erase(densities().begin());
  }
  *status = answer.status;
  return answer.value;
}

namespace orvane::nimbrel::config {
namespace {

using namespace test;
using namespace testing;

class LogLines : public testing::Test {
 protected:
  void SetUp() override {
    logged() = {};
    densities() = {{-1, 0}};
    APP_ID = "the.host";
    g_quillo_log_mask = util::LOG_MASK_DEBUG;
  }
  void TearDown() override { g_quillo_log_mask = 0; }

  /// What happens while a widget document with these children is read.
  static std::vector<std::string> eventsOf(const std::string& children) {
    logged().lines.clear();
    Reader().read(children);
    return logged().lines;
  }
};

constexpr const char* SETTINGS = "7 D the.host:NimbrelConfigParser::processSettings:";

TEST_F(LogLines, ReachSyslogByteForByte) {
  const std::string bad = "<tavlo:bad/>";  // has no line
  const std::string document =
      "<name>n</name><icon src='i'/><access origin='*'/><other/>" +
      extension("cookiejar", asset("x", "") + bad) +
      extension("auth", asset("k", "token") + asset("k", "no token")) +
      extension("network", asset("a", "b") + "<tavlo:errorPage src=' e  f '/><tavlo:errorPage/>") +
      extension("settings", named("setting", "zoomFactor", "0") + "<tavlo:setting name='a'/>") +
      extension("chrome", asset("configureSearchBar", "x") + bad) +
      extension("gestures", named("param", "tap", "yes") +
                                "<tavlo:param name='x' value='' properties=' p  q '/>" + bad) +
      extension("permissions", "<tavlo:permission name='a'/>" + named("permission", "b", "no")) +
      extension("messaging", named("app", "a", "yes") + bad) +
      extension("resources", asset("ApplicationCacheLoadDelay", "-1") + asset("Foo", "1")) +
      "<tavlo:export resource='a'/><tavlo:export resource='a'/><tavlo:export/>";
  const std::vector<std::string> lines = {
      "XmlConfigParser::processCookieJar:key = x, value = ",
      "NimbrelConfigParser::processAuth:key = k, value = token",
      "NimbrelConfigParser::processAuth:key = k, value = no token",
      "NimbrelConfigParser::processNetwork:key = a, value = b",
      "NimbrelConfigParser::processNetwork:src = e f",
      "density",
      "NimbrelConfigParser::processSettings:name = zoomFactor, value = 0",
      "NimbrelConfigParser::processChrome:key = configureSearchBar, value = x",
      "NimbrelConfigParser::processGestures:name = tap, value = yes, properties = none",
      "NimbrelConfigParser::processGestures:name = x, value = , properties = p q",
      "NimbrelConfigParser::processPermissions:name = a, allowed = 1",
      "NimbrelConfigParser::processPermissions:name = b, allowed = 0",
      "NimbrelConfigParser::processMessaging:name = a, value = yes",
      "NimbrelConfigParser::processLocalResources:key = ApplicationCacheLoadDelay, value = -1",
      "NimbrelConfigParser::processLocalResources:key = Foo, value = 1",
      "NimbrelConfigParser::processExport:resourcePath = a",
      "NimbrelConfigParser::processExport:resourcePath = a"};
  std::vector<std::string> expected;
  for (const std::string& line : lines) {
    expected.push_back(line == "density" ? line : "7 D the.host:" + line + ":");
  }
  EXPECT_THAT(eventsOf(document), ElementsAreArray(expected));
  g_quillo_log_mask = ~util::LOG_MASK_DEBUG;
  EXPECT_THAT(eventsOf(document), ElementsAre("density"));
}

TEST_F(LogLines, OfNetworkComeBeforeTheSettingActsAndOfOthersAfter) {
  EXPECT_ANY_THROW(eventsOf(extension("network", asset("maxConnections", ""))));
  EXPECT_THAT(logged().lines, ElementsAre("7 D the.host:NimbrelConfigParser::processNetwork:"
                                          "key = maxConnections, value = :"));
  EXPECT_ANY_THROW(eventsOf(extension("resources", asset("LocalStorageQuota", ""))));
  EXPECT_THAT(logged().lines, IsEmpty());
}

TEST_F(LogLines, ReadTheApplicationIdEachTime) {
  const std::string exported = "<tavlo:export resource='a'/>";
  eventsOf(exported);
  APP_ID = "another%s";
  EXPECT_THAT(eventsOf(exported),
              ElementsAre("7 D another%s:NimbrelConfigParser::processExport:resourcePath = a:"));
}

TEST_F(LogLines, EvaluateNothingWhileTheirBitIsClear) {
  int evaluated = 0;
  const auto argument = [&] { return ++evaluated; };
  for (const std::uint32_t mask : {0U, ~util::LOG_MASK_DEBUG, util::LOG_MASK_WARNING}) {
    g_quillo_log_mask = mask;
    NIMBREL_LOG_DEBUG("site", "n = %d", argument());
  }
  EXPECT_EQ(evaluated, 0);
  EXPECT_THAT(logged().lines, IsEmpty());
  g_quillo_log_mask = util::LOG_MASK_DEBUG;
  NIMBREL_LOG_DEBUG("site", "n = %d", argument());
  NIMBREL_LOG_WARNING("some_key", "never");
  g_quillo_log_mask = util::LOG_MASK_WARNING;
  NIMBREL_LOG_WARNING("some_key", "text");
  EXPECT_THAT(logged().lines,
              ElementsAre("7 D the.host:site:n = 1:", "4 W the.host:some_key:text:"));
}

TEST_F(LogLines, TheDebugSettingSwitchesThemOnFromItsOwnOn) {
  g_quillo_log_mask = 0;
  EXPECT_THAT(
      eventsOf(extension("chrome", asset("a", "b")) +
               extension("settings", named("setting", "a", "b") + named("setting", "debug", "no") +
                                         named("setting", "debug", "yes") +
                                         named("setting", "c", "d")) +
               "<tavlo:export resource='r'/>"),
      ElementsAre("density", std::string(SETTINGS) + "name = debug, value = yes:",
                  std::string(SETTINGS) + "name = c, value = d:",
                  "7 D the.host:NimbrelConfigParser::processExport:resourcePath = r:"));
  EXPECT_EQ(g_quillo_log_mask, 0x0FFFFFFEU);
  g_quillo_log_mask = 0xF0000001U;  // overwritten, not joined
  eventsOf(extension("settings", named("setting", "debug", "yes")));
  EXPECT_EQ(g_quillo_log_mask, 0x0FFFFFFEU);
}

TEST_F(LogLines, HostileValuesTouchNeitherFormatNorLine) {
  // Line breaks arrive as blanks, however they are written, and are squeezed and trimmed.
  EXPECT_THAT(eventsOf(extension("cookiejar",
                                 "<tavlo:asset key='&#10;a\n\n&#13;&#10;b&#10;' "
                                 "value='%s%n%1$*2$d 100%\r\n7 D x:y:z:&#10;'/>")),
              ElementsAre("7 D the.host:XmlConfigParser::processCookieJar:"
                          "key = a b, value = %s%n%1$*2$d 100% 7 D x:y:z::"));
  EXPECT_THAT(logged().formats, ElementsAre("D %s:%s:key = %s, value = %s:"));
  // What else is in them is passed on as it is, in any length.
  const std::string odd = "\x7F\xC2\x85\xE2\x80\xA8" + std::string(100000, 'x');
  EXPECT_THAT(
      eventsOf("<tavlo:export resource='" + odd + "'/>"),
      ElementsAre("7 D the.host:NimbrelConfigParser::processExport:resourcePath = " + odd + ":"));
}

TEST_F(LogLines, DensityIsAskedOnceForEachSettingsElementBeforeItsChildren) {
  EXPECT_THAT(eventsOf("<tavlo:settings/>" +
                       extension("settings", named("setting", "defaultFontSize", "1") +
                                                 named("setting", "defaultFontSize", "2")) +
                       extension("settings", "<tavlo:bad/>") + "<settings/><tavlo:chrome/>"),
              ElementsAre("density", "density",
                          std::string(SETTINGS) + "name = defaultFontSize, value = 1:",
                          std::string(SETTINGS) + "name = defaultFontSize, value = 2:", "density"));
}

TEST_F(LogLines, TheDensityDecidesWhichFontSizeCounts) {
  // "status/value ..." of the densities | "suffix=size ..." of each element => size and any error
  const auto sizeFor = [](const std::string& row) {
    densities().clear();
    std::string children;
    for (const std::string& part : zel::util::StringUtil::split(row, '|')) {
      std::string settings;
      for (const std::string& entry : zel::util::StringUtil::split(part, ' ')) {
        const std::size_t at = entry.find_first_of("/=");
        if (at != std::string::npos && entry[at] == '/') {
          densities().push_back({std::stoi(entry), std::stoi(entry.substr(at + 1))});
        } else if (at != std::string::npos) {
          settings +=
              named("setting", "defaultFontSize" + entry.substr(0, at), entry.substr(at + 1));
        }
      }
      children += settings.empty() ? "" : extension("settings", settings);
    }
    Reader reader;
    const int size = reader.read(children)->getAppSettings().defaultFontSize;
    return std::to_string(size) + (reader.getErrorText().empty() ? "" : " ") +
           reader.getErrorText();
  };
  expectRows(R"(
      0/300 | =20 300=24 => 24  0/300 | 300=24 =20 => 24  0/300 | 300=24 300=26 => 26
      0/300 | =20 =22 => 20  0/300 | =20 | =22 => 20  0/300 | =20 =0 => 20
      0/300 | =0 =22 => 22 Invalid defaultFontSize value : 0
      0/300 | 300=24 300=-1 => 24 Invalid defaultFontSize value : -1
      0/300 | 160=9 0300=9 &#32;300=9 3000=9 => 0
      1/300 | =20 =22 => 22  1/300 | =20 =x => 20 Invalid defaultFontSize value : x
      1/300 | 300=24 0=25 => 0  -5/0 | =20 | =22 => 22  0/0 | 0=9 =20 => 9
      0/-1 | =20 -1=9 1=8 => 9  0/-2147483648 | -2147483648=9 => 9
      0/300 0/160 | 300=24 160=1 | 300=2 160=16 => 16
      0/300 1/0 | =20 =21 | =22 300=2 => 22  1/0 0/300 | =20 =21 | =22 => 21)",
             sizeFor);
}

}  // namespace
}  // namespace orvane::nimbrel::config
