#include "tests/tools/Tool.h"

namespace nimbrel_test {
namespace {

/// What `id` prints of "OPTION IDENTIFIER", as compact JSON, or its status and error.
std::string idOf(const std::string& words) {
  const std::size_t blank = words.find(' ');
  const Outcome outcome =
      run({"id", words.substr(0, blank), words.substr(blank + 1), "--format", "json"});
  if (outcome.status == 0) {
    return Json::parse(outcome.out).dump();
  }
  EXPECT_EQ(outcome.out, "");
  return std::to_string(outcome.status) + " " + outcome.error;
}

TEST(IdTool, PrintsTheNamesOfAnIdentifierOrWhyThereAreNone) {
  const Row rows[] = {
      {"--iri http://Example.org/maps",
       R"({"string":"http://Example.org/maps","authority":"Example.org%2Fmaps",)"
       R"("directoryName":"example.org=2Fmaps",)"
       R"("topLevelApplicationDataDirectory":".mirelda_sandbox"})"},
      {"--filename city maps.wgt",
       R"({"string":"city maps.wgt","authority":"city%20maps","directoryName":"city=20maps",)"
       R"("topLevelApplicationDataDirectory":".mirelda_sandbox"})"},
      {"--application maps42",
       R"({"string":"maps42","authority":"maps42","directoryName":"maps42",)"
       R"("topLevelApplicationDataDirectory":".mirelda"})"},
      {"--iri ", "1 id cannot be the empty string.\n"},
      {"--filename ", "1 id cannot be the empty string.\n"},
      {"--application ", "1 tavloApplicationId cannot be the empty string.\n"},
      {"--iri http://[bad", "1 The provided widget id is not a valid URI.\n"},
  };
  expectRows(rows, idOf);
  EXPECT_EQ(run({"id"}).status, 2);
  EXPECT_EQ(run({"id", "--iri", "http://a.example/", "--application", "a"}).status, 2);
}

}  // namespace
}  // namespace nimbrel_test
