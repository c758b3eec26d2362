// A host of its own: it brings the data and the query that a host process brings, and takes the
// lines that go to syslog.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

#include "tests/support/ConfigReader.h"
#include "util/Log.h"

namespace {

struct Density {
  int status;  // 0: known
  int value;
};

struct Host {
  std::vector<std::string> events;  // "7 D app:site:message:", "density"
  std::vector<std::string> formats;
  std::vector<Density> densities = {{-1, 0}};  // the answers to come; the last one stays
};

Host& host() {
  static Host instance;
  return instance;
}

void takeLine(int priority, const char* format, std::va_list arguments) {
  std::string line(200000, '\0');
  const int size = std::vsnprintf(line.data(), line.size(), format, arguments);
  line.resize(static_cast<std::size_t>(size));
  host().events.push_back(std::to_string(priority) + " " + line);
  host().formats.emplace_back(format);
}

}  // namespace

#pragma GCC visibility push(default)
extern "C" {

const char* APP_ID = "the.host";
std::uint32_t g_quillo_log_mask = 0;

int corvel_get_int(const char* group, const char* name, int* status, int defaultValue) {
  EXPECT_EQ(std::string(group) + "/" + name, "screen/dpi");
  EXPECT_EQ(*status, 0);
  EXPECT_EQ(defaultValue, 0);
  host().events.emplace_back("density");
  std::vector<Density>& answers = host().densities;
  const Density answer = answers.front();
  if (answers.size() > 1) {
    answers.erase(answers.begin());
  }
  *status = answer.status;
  return answer.value;
}

void syslog(int priority, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  takeLine(priority, format, arguments);
  va_end(arguments);
}

/// What `syslog` becomes in a build with _FORTIFY_SOURCE.
void __syslog_chk(int priority, int /*flag*/, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  takeLine(priority, format, arguments);
  va_end(arguments);
}
}
#pragma GCC visibility pop

namespace orvane::nimbrel::config {
namespace {

using test::asset;
using test::extension;
using test::named;
using test::Reader;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

class LogLines : public testing::Test {
 protected:
  void SetUp() override {
    host() = Host();
    APP_ID = "the.host";
    g_quillo_log_mask = util::LOG_MASK_DEBUG;
  }
  void TearDown() override { g_quillo_log_mask = 0; }

  /// What happens while a widget document with these children is read.
  static std::vector<std::string> eventsOf(const std::string& children) {
    host().events.clear();
    Reader().read(children);
    return host().events;
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
  EXPECT_THAT(host().events, ElementsAre("7 D the.host:NimbrelConfigParser::processNetwork:"
                                         "key = maxConnections, value = :"));
  EXPECT_ANY_THROW(eventsOf(extension("resources", asset("LocalStorageQuota", ""))));
  EXPECT_THAT(host().events, IsEmpty());
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
  EXPECT_THAT(host().events, IsEmpty());
  g_quillo_log_mask = util::LOG_MASK_DEBUG;
  NIMBREL_LOG_DEBUG("site", "n = %d", argument());
  NIMBREL_LOG_WARNING("some_key", "never");
  g_quillo_log_mask = util::LOG_MASK_WARNING;
  NIMBREL_LOG_WARNING("some_key", "text");
  EXPECT_THAT(host().events,
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
  EXPECT_THAT(host().formats, ElementsAre("D %s:%s:key = %s, value = %s:"));
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
  const auto font = [](const std::string& suffix, const std::string& value) {
    return named("setting", "defaultFontSize" + suffix, value);
  };
  const std::string invalid = "Invalid defaultFontSize value : ";
  const std::vector<Density> at300 = {{0, 300}};
  const std::vector<Density> unknown = {{1, 300}};
  const struct {
    std::vector<Density> densities;
    std::vector<std::string> elements;
    int size;
    std::string error;
  } cases[] = {
      {at300, {font("", "20") + font("300", "24")}, 24, ""},
      {at300, {font("300", "24") + font("", "20")}, 24, ""},
      {at300, {font("300", "24") + font("300", "26")}, 26, ""},
      {at300, {font("", "20") + font("", "22")}, 20, ""},
      {at300, {font("", "20"), font("", "22")}, 20, ""},
      {at300, {font("", "0") + font("", "22")}, 22, invalid + "0"},
      {at300, {font("", "20") + font("", "0")}, 20, ""},  // not looked at
      {at300, {font("300", "24") + font("300", "-1")}, 24, invalid + "-1"},
      {at300,
       {font("160", "9") + font("0300", "9") + font(" 300", "9") + font("3000", "9")},
       0,
       ""},
      {unknown, {font("", "20") + font("", "22")}, 22, ""},
      {unknown, {font("", "20") + font("", "x")}, 20, invalid + "x"},
      {unknown, {font("300", "24") + font("0", "25")}, 0, ""},
      {{{-5, 0}}, {font("", "20"), font("", "22")}, 22, ""},
      {{{0, 0}}, {font("0", "9") + font("", "20")}, 9, ""},
      {{{0, -1}}, {font("", "20") + font("-1", "9") + font("1", "8")}, 9, ""},
      {{{0, -2147483647 - 1}}, {font("-2147483648", "9")}, 9, ""},
      {{{0, 300}, {0, 160}},
       {font("300", "24") + font("160", "1"), font("300", "2") + font("160", "16")},
       16,
       ""},
      {{{0, 300}, {1, 0}},
       {font("", "20") + font("", "21"), font("", "22") + font("300", "2")},
       22,
       ""},
      {{{1, 0}, {0, 300}}, {font("", "20") + font("", "21"), font("", "22")}, 21, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.elements) + " at " +
                 std::to_string(c.densities.front().value));
    host().densities = c.densities;
    std::string children;
    for (const std::string& element : c.elements) {
      children += extension("settings", element);
    }
    Reader reader;
    EXPECT_EQ(reader.read(children)->getAppSettings().defaultFontSize, c.size);
    EXPECT_EQ(reader.getErrorText(), c.error);
  }
}

}  // namespace
}  // namespace orvane::nimbrel::config
