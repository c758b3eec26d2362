#include "tests/tools/Tool.h"

namespace nimbrel_test {
namespace {

const std::string NAMES = widget(
    "<name>Maps</name><name xml:lang='de'> Karten\n\xC2\x9B"
    "2J </name><name>late</name>");

TEST(LocalizedTool, PrintsOneTextForEachLanguage) {
  const Row rows[] = {
      {"", "*   Maps\nde  Karten \\u009b2J\n"},
      {"--raw", "*   Maps\nde   Karten\n    \\u009b2J \n"},
      {"--format=json", "{\n  \"*\": \"Maps\",\n  \"de\": \"Karten \\u009b2J\"\n}\n"}};
  expectRows(rows, [](const std::string& option) {
    std::vector<std::string> arguments = {"localized", "name", "-"};
    if (!option.empty()) {
      arguments.push_back(option);
    }
    const Outcome outcome = run(arguments, NAMES);
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    return outcome.out;
  });
}

TEST(LocalizedTool, ReadsFilesAndTellsWhyItCannot) {
  const TemporaryFile good(NAMES);
  EXPECT_EQ(run({"localized", "name", good.path()}).status, 0);
  EXPECT_EQ(run({"localized", "author", good.path(), "--format", "json"}).out, "{}\n");

  const TemporaryFile bad("<widget>\n<name>");
  const Outcome rejected = run({"localized", "name", bad.path()});
  EXPECT_EQ(rejected.status, 1);
  EXPECT_EQ(rejected.error.rfind(bad.path() + ":2:", 0), 0U) << rejected.error;

  const Outcome directory = run({"localized", "name", "/"});
  EXPECT_EQ(directory.status, 2);
  EXPECT_EQ(directory.error,
            "/: cannot be read: Is a directory without config.xml; use -r with check or show\n");
}

}  // namespace
}  // namespace nimbrel_test
