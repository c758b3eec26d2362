#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "tests/tools/Tool.h"

namespace nimbrel_test {
namespace {

std::string contentOf(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(RecordJson, AnEmptyDocumentGivesEveryKeyInItsOrder) {
  EXPECT_EQ(show(widget("")), Json::parse(R"({
    "author": null, "features": [], "icons": [], "startFile": null, "description": null,
    "height": null, "width": null, "id": null, "license": null, "name": null, "preferences": [],
    "shortName": null, "windowModes": [], "userAgentLocales": ["*"], "version": null,
    "tavloApplicationId": null, "tavloApplicationVersion": null, "accessRequestList": [],
    "cookieJarSettings": {"persistent": false, "usePrivateCookies": false,
      "useDeviceCookies": false, "useAuthCookies": false, "useAccessToken": false,
      "useAuthCookiesForRegionalStack": false},
    "orvnAuthMode": 0,
    "netSettings": {"userAgents": [], "httpHeaders": [], "errorPage": "", "overrideProxy": "",
      "idleConnectionsTimeout_sec": 25, "maxConnectionsPerHost": 8, "maxConnections": 24,
      "maxConnectionsPerProxy": 24, "maxKeepAliveProxyConnections": 8, "initialDNS": false,
      "enableCaching": false, "enableWrsProxy": false, "allowTlsFallback": false},
    "gestureSettings": {"flick": {"enabled": false, "properties": ""},
      "swipe": {"enabled": false, "properties": ""}, "drag": {"enabled": false, "properties": ""},
      "pinchzoom": {"enabled": false, "properties": ""},
      "tap": {"enabled": false, "properties": ""},
      "multi_tap": {"enabled": false, "properties": ""},
      "hold": {"enabled": false, "properties": ""}},
    "appPermissions": {}, "chromeSettings": "system",
    "appSettings": {"internetRequired": false, "defaultFontSize": 0, "minimumFontSize": -1,
      "enforce96DPI": false, "flattenFrames": false, "zoomFactor": 0.0, "saveContext": true,
      "debug": false, "enableW3CStd": false, "disableZelFeatures": false, "inspector": false,
      "screenReaderSupported": false, "pelloWebViewParserSupported": false},
    "messagingPermissions": {},
    "localResources": {"otherSettings": {}, "localStorageQuota": 0, "localStoragePath": "",
      "databaseStorage": false, "databaseStorageQuota": 0, "databaseStoragePath": "",
      "applicationCachePath": "", "applicationCacheQuota": 0, "applicationCacheLoadDelay": 0.0,
      "allowHTTPSApplicationManifestCrossDomain": false},
    "exports": [], "elements": [], "errorText": ""})"));
}

TEST(RecordJson, TheExampleGivesTheRecordThatStandsBesideIt) {
  const std::string path = NIMBREL_EXAMPLES "/config.xml";
  const Outcome outcome =
      run({"show", "--locale", "he", "--locale", "de", "--format", "json", path});
  ASSERT_EQ(outcome.status, 0) << outcome.error;
  EXPECT_EQ(outcome.out, contentOf(NIMBREL_EXAMPLES "/config.json"));
  const Json copied = show(contentOf(path), {"--locale", "he", "--locale", "de"});
  EXPECT_EQ(Json::parse(outcome.out), copied) << "from a file and from standard input";
}

TEST(RecordJson, NumbersKeepTheirShortestForm) {
  const std::string document = widget(
      "<t:settings><t:setting name='zoomFactor' value='1.1'/></t:settings>"
      "<t:resources><t:asset key='ApplicationCacheLoadDelay' value='0.1'/></t:resources>");
  const Json record = show(document);
  EXPECT_EQ(record["appSettings"]["zoomFactor"].dump(), "1.1");
  EXPECT_EQ(record["localResources"]["applicationCacheLoadDelay"].dump(), "0.1");
}

TEST(RecordJson, TheVisitingOrderAndTheErrorTextAreShown) {
  const Json record = show(widget("<name>none</name><t:zoo/><name xml:lang='fr'>never</name>"
                                  "<name xml:lang='en-us'>first</name><x xmlns=''/>"),
                           {"--locale", "en-us"});
  EXPECT_EQ(record["name"]["text"], "first");
  const Json expected = {
      {{"name", "name"}, {"namespace", "http://www.w3.org/ns/widgets"}},
      {{"name", "name"}, {"namespace", "http://www.w3.org/ns/widgets"}},
      {{"name", "zoo"}, {"namespace", "http://tavlo.example/ns/widget-extensions"}},
      {{"name", "x"}, {"namespace", nullptr}}};
  EXPECT_EQ(record["elements"], expected);
  EXPECT_EQ(record["errorText"],
            "!Error: ConfigParser::processWidgetElements, Found unknown xml element");
}

TEST(RecordJson, HundredsOfThousandsOfEntriesArePrintedInTime) {
  std::string permissions;
  for (int i = 0; i < 200000; ++i) {
    permissions += "<t:permission name='p" + std::to_string(i) + "'/>";
  }
  const Outcome outcome = run({"show", "--format", "json", "-"},
                              widget("<t:permissions>" + permissions + "</t:permissions>"));
  ASSERT_EQ(outcome.status, 0) << outcome.error;
  // A sorted object: one that keeps the order of its keys takes its time to be read.
  EXPECT_EQ(nlohmann::json::parse(outcome.out)["appPermissions"].size(), 200000U);
}

}  // namespace
}  // namespace nimbrel_test
