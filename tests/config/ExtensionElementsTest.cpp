#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>
#include <limits>

#include "tests/support/Checks.h"
#include "tests/support/ConfigReader.h"
#include "util/HostSymbols.h"

namespace orvane::nimbrel::config {
namespace {

using namespace test;
using namespace testing;

using Parser = NimbrelConfigParser;

std::string setting(const std::string& name, const std::string& value) {
  return named("setting", name, value);
}

/// The record of one extension element around these children.
std::shared_ptr<Config> readIn(const std::string& element, const std::string& children) {
  return read(extension(element, children));
}

/// How many of the good children below had their effect.
std::size_t effects(const Config& record) {
  const bool flags[] = {record.getCookieJarSettings().persistent,
                        record.getOrvnAuthMode() == 1,
                        record.getNetSettings().maxConnections == 1,
                        record.getAppSettings().inspector,
                        record.getChromeSettings() == "none",
                        record.getGestureSettings().tap.enabled,
                        record.getLocalResources().localStorageQuota == 1};
  return static_cast<std::size_t>(std::count(std::begin(flags), std::end(flags), true)) +
         record.getAppPermissions().size() + record.getMessagingPermissions().size();
}

TEST(ExtensionElements, StopAtTheFirstMalformedChildAndKeepWhatWasRead) {
  const auto expect = [](const std::string& element,
                         bool (Parser::*handler)(const std::shared_ptr<util::XmlNode>&),
                         const std::string& good, const std::vector<Row>& faults) {
    const auto node = [&](const std::string& children) {
      return rootOf(widget(extension(element, children)))->getFirstElementChild();
    };
    for (const auto& [bad, message] : faults) {
      SCOPED_TRACE(element + bad);
      Reader reader;
      EXPECT_FALSE((reader.*handler)(node(bad)));  // there is no record yet
      reader.read("");
      EXPECT_FALSE((reader.*handler)(nullptr));
      EXPECT_TRUE((reader.*handler)(node(" x <!-- y -->" + good + "<?p?>")));
      EXPECT_EQ(reader.getErrorText(), "");
      EXPECT_EQ(effects(reader.record()), 1U);
      EXPECT_FALSE((reader.*handler)(node(bad)));

      EXPECT_EQ(effects(*reader.read(extension(element, good + bad))), 1U);
      EXPECT_EQ(reader.getErrorText(), message);
      EXPECT_EQ(reader.record().elements().size(), 1U);
      EXPECT_EQ(effects(*reader.read(extension(element, bad + good))), 0U);
    }
  };
  expect("cookiejar", &Parser::processCookieJar, asset("persistent", "true"),
         {{"<tavlo:x/>", "tavlo:cookiejar is missing tavlo:asset element "},
          {"<asset key='a' value='b'/>", "tavlo:cookiejar is missing tavlo:asset element "},
          {"<tavlo:asset key='a'/>", "tavlo:cookie, missing attributes for tavlo:asset element"}});
  expect(
      "auth", &Parser::processAuth, asset("any", "token"),
      {{"<tavlo:Asset/>", "tavlo:auth is missing tavlo:asset element "},
       {"<tavlo:asset value='token'/>", "tavlo:auth, missing attributes for tavlo:asset element"}});
  expect(
      "network", &Parser::processNetwork, asset("maxConnections", "1"),
      {{"<errorPage src='a'/>", "tavlo:network unknown sub element"},
       {"<tavlo:errorPage/>", "tavlo:network, missing 'src' attribute for tavlo:errorPage element"},
       {"<tavlo:asset tavlo:key='a' value='b'/>",
        "tavlo:network, missing attributes for tavlo:asset element"}});
  expect("settings", &Parser::processSettings, setting("inspector", "yes"),
         {{"<tavlo:asset/>", "tavlo:settings unknown sub element"},
          {"<tavlo:setting name='a'/>",
           "tavlo:settings, missing attributes for tavlo:settings element\n"}});
  expect("chrome", &Parser::processChrome, asset("configureSearchBar", "none"),
         {{"<tavlo:setting/>", "tavlo:chrome unknown sub element"},
          {"<tavlo:asset key='a'/>", "tavlo:chrome, missing attributes for tavlo:asset element"}});
  expect("gestures", &Parser::processGestures, named("param", "tap", "yes"),
         {{"<param name='a' value='b'/>", "Invalid gesture's param format"},
          {"<tavlo:param name='a' properties='p'/>",
           "tavlo:network, missing attributes for tavlo:asset element"}});
  expect("permissions", &Parser::processPermissions, named("permission", "a", "no"),
         {{"<tavlo:app/>", "Invalid permissions param format"},
          {"<tavlo:permission value='no'/>",
           "tavlo:permission, missing attribute name for tavlo:permission element"}});
  expect("messaging", &Parser::processMessaging, named("app", "a", "yes"),
         {{"<tavlo:permission/>", "tavlo:messaging unknown sub element"},
          {"<tavlo:app name='b'/>",
           "tavlo:messaging, missing attributes for tavlo:messaging element"}});
  expect("resources", &Parser::processLocalResources, asset("LocalStorageQuota", "1"),
         {{"<tavlo:setting/>", "tavlo:resources unknown sub element"},
          {"<tavlo:asset key='a'/>",
           "tavlo:resources, missing attributes for tavlo:resources element"}});
}

// Which member each key fills is tested with the tool, by the descriptions.

TEST(CookieJar, FlagsAreRaisedForTrueAloneAndStayRaised) {
  const auto isPersistent = [](const std::string& children) {
    return read(children)->getCookieJarSettings().persistent;
  };
  for (const char* value : {"", "false", "TRUE", "1", "yes"}) {
    EXPECT_FALSE(isPersistent(extension("cookiejar", asset("persistent", value)))) << value;
  }
  EXPECT_FALSE(isPersistent(extension("cookiejar", asset("Persistent", "true"))));
  EXPECT_TRUE(isPersistent(
      extension("cookiejar", asset("persistent", " true ") + asset("persistent", "no")) +
      extension("cookiejar", asset("persistent", "false"))));
}

TEST(Auth, OnlyTheValueCounts) {
  const struct {
    std::string children;
    int mode;
    bool known;
  } cases[] = {{asset("any", "token") + asset("", " token "), 1, true},
               {asset("token", "Token"), 0, false},
               {asset("a", ""), 0, false},
               {asset("a", "x") + asset("b", "token"), 1, false},  // goes on
               {asset("b", "token") + asset("a", "x"), 1, false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.children);
    Reader reader;
    EXPECT_EQ(reader.read(extension("auth", c.children))->getOrvnAuthMode(), c.mode);
    EXPECT_EQ(reader.getErrorText(), c.known ? "" : "nvalid certification key: ");
    EXPECT_EQ(reader.processAuth(reader.record().elements()[0].getNode()), c.known);
  }
}

/// What a bad number throws ends the parse; what was read before stays.
void expectNumberIsGuarded(const char* element, const char* key) {
  for (const char* value : {"", " ", "4294967296"}) {
    Reader reader;
    const auto parse = [&] {
      reader.read("<name>before</name>" + extension(element, asset(key, "7") + asset(key, value)) +
                  "<tavlo:export resource='after'/>");
    };
    EXPECT_EQ(*value == '4' ? thrownBy<std::overflow_error>(parse)
                            : thrownBy<std::invalid_argument>(parse),
              "input");
    EXPECT_TRUE(reader.record().getName());
    EXPECT_TRUE(reader.record().getNetSettings().maxConnections == 7 ||
                reader.record().getLocalResources().localStorageQuota == 7);
    EXPECT_THAT(reader.record().getExports(), IsEmpty());
    EXPECT_EQ(reader.getErrorText(), "");
  }
}

TEST(Network, CountersAreNumbersAndTheLastCounts) {
  const auto connections = [](const std::string& children) {
    return readIn("network", children)->getNetSettings().maxConnections;
  };
  EXPECT_EQ(connections(asset("maxConnections", "7") + asset("maxConnections", " 12px ")), 12U);
  EXPECT_EQ(connections(asset("maxConnections", "abc")), 0U);
  expectNumberIsGuarded("network", "maxConnections");
}

TEST(Network, FlagsAreAssignedBothWays) {
  const auto caches = [](const char* first, const char* second) {
    return readIn("network", asset("enableCaching", first) + asset("enableCaching", second))
        ->getNetSettings()
        .enableCaching;
  };
  for (const char* value : {"false", "TRUE", "yes", "1", ""}) {
    EXPECT_FALSE(caches("true", value)) << value;
  }
  EXPECT_TRUE(caches("no", "true"));
}

TEST(Network, ListsGrowAndTextsAreReplaced) {
  const std::string first = asset("user-agent", "a  a") + asset("http-header", "X: 1") +
                            asset("overrideProxy", "p") + "<tavlo:errorPage src='one.html'/>" +
                            asset("user-agent", "") + asset("User-Agent", "no") +
                            asset("errorPage", "no");
  const std::string second = "<tavlo:errorPage src=' two.html '/>" + asset("user-agent", "a  a") +
                             asset("overrideProxy", "") + asset("http-header", "Y: 2");
  const Config::NetSettings net =
      read(extension("network", first) + extension("network", second))->getNetSettings();
  EXPECT_THAT(net.userAgents, ElementsAre("a a", "", "a a"));
  EXPECT_THAT(net.httpHeaders, ElementsAre("X: 1", "Y: 2"));
  EXPECT_EQ(net.errorPage + net.overrideProxy, "two.html");
  EXPECT_EQ(readIn("network", first)->getNetSettings().overrideProxy, "p");
}

TEST(Settings, FlagsLeaveTheirDefaultsForTheTriggerWordAlone) {
  using App = Config::AppSettings;
  const std::pair<std::string, bool App::*> flags[] = {{"internetRequired", &App::internetRequired},
                                                       {"saveContext", &App::saveContext},
                                                       {"debug", &App::debug},
                                                       {"reserved", &App::reserved}};
  for (const auto& [name, flag] : flags) {
    const std::string trigger = name == "reserved" ? "" : name == "saveContext" ? "no" : "yes";
    for (const std::string value : {"yes", "no", "true", "false", "YES", "No", "1", "?"}) {
      SCOPED_TRACE(name + " = " + value);
      Reader reader;
      // Never back: a later entry changes nothing.
      const App app = reader.read(extension("settings", setting(name, value) + setting(name, "?")))
                          ->getAppSettings();
      for (const auto& [otherName, other] : flags) {
        EXPECT_EQ(app.*other != App().*other, other == flag && value == trigger) << otherName;
      }
      EXPECT_EQ(reader.getErrorText(), "");
    }
  }
  util::setLogMask(0);
}

TEST(Settings, NumbersAreReadAsAStreamReadsThem) {
  const auto expect = [](const std::string& name, const std::string& value, double stored,
                         const std::string& error) {
    SCOPED_TRACE(name + " = " + value);
    Reader reader;
    const std::string goesOn = setting("inspector", "yes");
    const Config::AppSettings app =
        reader.read(extension("settings", setting(name, value) + goesOn))->getAppSettings();
    EXPECT_EQ(name == "zoomFactor"        ? static_cast<double>(app.zoomFactor)
              : name == "defaultFontSize" ? app.defaultFontSize
                                          : app.minimumFontSize,
              stored);
    EXPECT_EQ(reader.getErrorText(), error);
    EXPECT_TRUE(app.inspector);
    EXPECT_TRUE(reader.processSettings(reader.record().elements()[0].getNode()));
  };
  expect("defaultFontSize", " 20 ", 20, "");
  expect("defaultFontSize", "12abc", 12, "");
  expect("defaultFontSize", "+5", 5, "");
  expect("defaultFontSize", "99999999999", 2147483647, "");
  for (const std::string value : {"0", "-3", "abc", "0x10", "", ".5", "-99999999999"}) {
    expect("defaultFontSize", value, 0, "Invalid defaultFontSize value : " + value);
  }
  expect("minimumFontSize", "8", 8, "");
  for (const char* value : {"0", "abc", "-"}) {
    expect("minimumFontSize", value, 0, "");
  }
  for (const std::string value : {"", "-1", "-99999999999"}) {
    expect("minimumFontSize", value, -1, "Invalid minimum font size : " + value);
  }
  expect("zoomFactor", "1.5", 1.5, "");
  expect("zoomFactor", "1,5", 1, "");
  expect("zoomFactor", "1e99", static_cast<double>(std::numeric_limits<float>::max()), "");
  for (const char* value : {"0", "-1", "-0", "1e", "inf", "nan", "0x1", ""}) {
    expect("zoomFactor", value, 0, "Invalid zoom factor");
  }
  // A host that tells no density: each size counts.
  EXPECT_EQ(readIn("settings", setting("defaultFontSize", "20") + setting("defaultFontSize", "22"))
                ->getAppSettings()
                .defaultFontSize,
            22);
  // A bad value keeps what an earlier entry stored.
  const Config::AppSettings app =
      readIn("settings", setting("minimumFontSize", "8") + setting("zoomFactor", "2") +
                             setting("minimumFontSize", "-1") + setting("zoomFactor", "x"))
          ->getAppSettings();
  EXPECT_EQ(std::make_pair(app.minimumFontSize, app.zoomFactor), std::make_pair(8, 2.0F));
}

TEST(Chrome, EachElementStartsFromTheDefault) {
  const auto bar = [](const std::string& value) { return asset("configureSearchBar", value); };
  const std::string none = extension("chrome", bar("none") + asset("ConfigureSearchBar", "x"));
  EXPECT_EQ(read(none)->getChromeSettings(), "none");
  EXPECT_EQ(readIn("chrome", bar("none") + bar(" a  b "))->getChromeSettings(), "a b");
  EXPECT_EQ(readIn("chrome", bar(""))->getChromeSettings(), "");
  EXPECT_EQ(read(none + "<tavlo:chrome/>")->getChromeSettings(), "system");
  EXPECT_EQ(read(none + extension("chrome", "<tavlo:bad/>"))->getChromeSettings(), "system");
}

TEST(Gestures, AreEnabledForYesAloneAndKeepTheirProperties) {
  const auto tap = [](const std::string& children) {
    const Config::Gesture gesture = read(children)->getGestureSettings().tap;
    return (gesture.enabled ? "on " : "off ") + gesture.properties;
  };
  const auto gestures = [](const std::string& name, const std::string& attributes) {
    return extension("gestures", "<tavlo:param name='" + name + "' " + attributes + "/>");
  };
  const std::string on = gestures("tap", "value='yes' properties=' a:1;  b '");
  EXPECT_EQ(tap(on), "on a:1; b");
  EXPECT_EQ(tap(gestures("tap", "value='yes'")), "on ");
  for (const char* attributes : {"value='true' properties='x'", "value='Yes'", "value=''"}) {
    EXPECT_EQ(tap(gestures("tap", attributes)), "off ") << attributes;
  }
  EXPECT_EQ(tap(gestures("Tap", "value='yes'")), "off ");
  // A later element switches all off and keeps the properties, until others are given.
  EXPECT_EQ(tap(on + "<tavlo:gestures/>"), "off a:1; b");
  EXPECT_EQ(tap(on + gestures("tap", "value='no' properties='x'")), "off a:1; b");
  EXPECT_EQ(tap(on + gestures("hold", "value='yes'")), "off a:1; b");
  EXPECT_EQ(tap(on + gestures("tap", "value='yes'")), "on a:1; b");
  EXPECT_EQ(tap(on + gestures("tap", "value='yes' properties=''")), "on ");
  EXPECT_EQ(tap(extension("gestures", named("param", "tap", "yes") + named("param", "tap", "no"))),
            "on ");
  // Each gesture is switched off.
  std::string all;
  for (const char* name : {"flick", "swipe", "drag", "pinchzoom", "tap", "multi_tap", "hold"}) {
    all += named("param", name, "yes");
  }
  const auto record = read(extension("gestures", all) + "<tavlo:gestures/>");
  const auto& [a, b, c, d, e, f, g] = record->getGestureSettings();
  EXPECT_FALSE(a.enabled || b.enabled || c.enabled || d.enabled || e.enabled || f.enabled ||
               g.enabled);
}

TEST(Permissions, AreGrantedUnlessRejected) {
  const auto permission = [](const char* name, const char* value) {
    return named("permission", name, value);
  };
  const auto record =
      read(extension("permissions", "<tavlo:permission name=' camera '/>" + permission("a", "No") +
                                        permission("b", "false") + permission("c", " no ") +
                                        permission("d", "") + permission("e", "yes") +
                                        permission("f", "flase") + permission("", "no") +
                                        permission("g", "no") + permission("g", "x")) +
           extension("permissions", permission("e", "no") + "<tavlo:permission name='b'/>"));
  EXPECT_THAT(record->getAppPermissions(),
              ElementsAre(Pair("", false), Pair("a", true), Pair("b", true), Pair("c", false),
                          Pair("camera", true), Pair("d", true), Pair("e", false), Pair("f", true),
                          Pair("g", true)));
}

TEST(Messaging, IsRejectedUnlessGranted) {
  const auto app = [](const char* name, const char* value) { return named("app", name, value); };
  const auto record =
      read(extension("messaging", app("a", "yes") + app("b", " true ") + app("c", "no") +
                                      app("d", "Yes") + app("e", "") + app("f", "yes") +
                                      app("f", "1") + app(" ", "yes")) +
           extension("messaging", app("c", "true")));
  EXPECT_THAT(record->getMessagingPermissions(),
              ElementsAre(Pair("", true), Pair("a", true), Pair("b", true), Pair("c", true),
                          Pair("d", false), Pair("e", false), Pair("f", false)));
}

TEST(LocalResources, TheLastValueCountsAndOtherKeysAreKept) {
  const std::string all = asset("LocalStorageQuota", "10MB") + asset("LocalStoragePath", " a  b ") +
                          asset("DatabaseStorageQuota", "20") + asset("Foo", "1") +
                          asset("localStorageQuota", "2") + asset("", "3") + asset("Foo", "4");
  const auto first = readIn("resources", all);
  const Config::LocalResources& local = first->getLocalResources();
  EXPECT_THAT(local.otherSettings,
              ElementsAre(Pair("", "3"), Pair("Foo", "4"), Pair("localStorageQuota", "2")));
  EXPECT_EQ(local.localStoragePath, "a b");
  EXPECT_EQ(local.localStorageQuota, 10U);

  const std::string replaced = asset("LocalStorageQuota", "x") + asset("LocalStoragePath", "");
  const auto later = read(extension("resources", all) + extension("resources", replaced));
  EXPECT_EQ(later->getLocalResources().localStorageQuota, 0U);
  EXPECT_EQ(later->getLocalResources().localStoragePath, "");
  EXPECT_EQ(later->getLocalResources().databaseStorageQuota, 20U);
  expectNumberIsGuarded("resources", "LocalStorageQuota");
}

TEST(LocalResources, TheTwoFlagsHaveTriggerWordsOfTheirOwn) {
  const std::string database = "DatabaseStorage";
  const std::string crossDomain = "AllowHTTPSApplicationManifestCrossDomain";
  for (const std::string value : {"true", "yes", "false", "True", "1", ""}) {
    const Config::LocalResources local =
        readIn("resources", asset(database, "yes") + asset(crossDomain, "true") +
                                asset(database, value) + asset(crossDomain, value))
            ->getLocalResources();
    EXPECT_EQ(local.databaseStorage, value == "true" || value == "yes") << value;
    EXPECT_EQ(local.allowHTTPSApplicationManifestCrossDomain, value == "true") << value;
  }
}

TEST(LocalResources, LoadDelaysBelowZeroAreReportedAndSkipped) {
  const auto expectDelay = [](const std::string& value, double delay, const std::string& error) {
    SCOPED_TRACE(value);
    const std::string key = "ApplicationCacheLoadDelay";
    Reader reader;
    const Config::LocalResources local =
        reader.read(extension("resources", asset(key, "7") + asset(key, value) + asset("a", "b")))
            ->getLocalResources();
    EXPECT_EQ(local.applicationCacheLoadDelay, delay);
    EXPECT_EQ(local.otherSettings.size(), 1U);  // it goes on
    EXPECT_EQ(reader.getErrorText(), error);
    EXPECT_TRUE(reader.processLocalResources(reader.record().elements()[0].getNode()));
  };
  for (const char* value : {"0", "abc", "", "1e", "0x9", "-"}) {
    expectDelay(value, 0, "");
  }
  expectDelay("1e3s", 1000, "");
  expectDelay("1,5", 1, "");
  expectDelay("1e999", std::numeric_limits<double>::max(), "");
  expectDelay("-1", 7, "Invalid ApplicationCacheLoadDelay: -1");
  expectDelay(" -0.5  x ", 7, "Invalid ApplicationCacheLoadDelay: -0.5 x");
}

TEST(Export, PathsThatAreMadeToCollideAreRejectedBeforeTheyCostMuch) {
  Reader reader;
  const auto record = reader.read("");
  reader.record().exports().max_load_factor(1e6F);  // all in few buckets, as crafted paths would be
  std::string children;
  for (int i = 0; i < 5000; ++i) {
    children += "<export resource='" + std::to_string(i) + "'/>";
  }
  const auto root = rootOf(widget(children));
  int kept = 0;
  for (auto child = root->getFirstElementChild(); child; child = child->getNextElementSibling()) {
    kept += reader.processExport(child) ? 1 : 0;
  }
  EXPECT_EQ(reader.getErrorText(), "Too many colliding resource paths");
  EXPECT_GT(kept, 100);
  EXPECT_LT(kept, 5000);
  EXPECT_EQ(record->getExports().size(), static_cast<std::size_t>(kept));
}

TEST(Export, TheFirstOfAPathWins) {
  Reader reader;
  EXPECT_FALSE(reader.processExport(rootOf("<export resource='a'/>")));
  const auto record = reader.read(
      "<tavlo:export resource=' a  b '/><tavlo:export resource='c'/><tavlo:export resource='c'/>"
      "<tavlo:export resource=' '/><tavlo:export resource='C'><tavlo:bad/></tavlo:export>");
  const auto path = [](const char* text) {
    return Pair(text, testing::Field(&Config::Export::resourcePath, text));
  };
  EXPECT_THAT(record->getExports(),
              UnorderedElementsAre(path("a b"), path("c"), path(""), path("C")));
  EXPECT_FALSE(reader.processExport(nullptr));
  EXPECT_TRUE(reader.processExport(reader.record().elements()[2].getNode()));
  EXPECT_EQ(reader.getErrorText(), "");
  EXPECT_THAT(reader.read("<tavlo:export tavlo:resource='x'/>")->getExports(), IsEmpty());
  EXPECT_EQ(reader.getErrorText(), "Missing or invalid resource element");
  EXPECT_FALSE(reader.processExport(reader.record().elements()[0].getNode()));
}

}  // namespace
}  // namespace orvane::nimbrel::config
