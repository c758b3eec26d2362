
#include "tests/tools/Tool.h"

namespace nimbrel_test {
namespace {

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
  std::string names;
  for (const Json& element : record["elements"]) {
    names += element["name"].dump() + element["namespace"].dump();
  }
  EXPECT_EQ(names, R"("name""http://www.w3.org/ns/widgets""name""http://www.w3.org/ns/widgets")"
                   R"("zoo""http://tavlo.example/ns/widget-extensions""x"null)");
  EXPECT_EQ(record["errorText"],
            "!Error: ConfigParser::processWidgetElements, Found unknown xml element");
}

TEST(RecordJson, HundredsOfThousandsOfEntriesArePrintedInTime) {
  const auto withPermissions = [](std::size_t count) {
    std::string permissions;
    for (std::size_t i = 0; i < count; ++i) {
      permissions += "<t:permission name='p" + std::to_string(i) + "'/>";
    }
    return widget("<t:permissions>" + permissions + "</t:permissions>");
  };
  Outcome outcome;
  const std::size_t count = orvane::nimbrel::test::expectCostInProportion(
      25000, withPermissions, [&](const std::string& document) {
        outcome = run({"show", "--format", "json", "-"}, document);
      });
  ASSERT_EQ(outcome.status, 0) << outcome.error;
  // A sorted object: one that keeps the order of its keys takes its time to be read.
  EXPECT_EQ(nlohmann::json::parse(outcome.out)["appPermissions"].size(), count);
}

}  // namespace
}  // namespace nimbrel_test
