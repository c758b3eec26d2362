#include <gtest/gtest.h>

#include "tests/tools/Tool.h"

namespace nimbrel_test {
namespace {

TEST(IdTool, PrintsTheNamesOfEachKindOfIdentifier) {
  const struct {
    const char* option;
    const char* identifier;
    Json expected;
  } cases[] = {
      {"--iri",
       "http://Example.org/maps",
       {{"string", "http://Example.org/maps"},
        {"authority", "Example.org%2Fmaps"},
        {"directoryName", "example.org=2Fmaps"},
        {"topLevelApplicationDataDirectory", ".mirelda_sandbox"}}},
      {"--filename",
       "city maps.wgt",
       {{"string", "city maps.wgt"},
        {"authority", "city%20maps"},
        {"directoryName", "city=20maps"},
        {"topLevelApplicationDataDirectory", ".mirelda_sandbox"}}},
      {"--application",
       "maps42",
       {{"string", "maps42"},
        {"authority", "maps42"},
        {"directoryName", "maps42"},
        {"topLevelApplicationDataDirectory", ".mirelda"}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.option);
    const Outcome outcome = run({"id", c.option, c.identifier, "--format", "json"});
    ASSERT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_EQ(Json::parse(outcome.out).dump(), c.expected.dump());  // the order of keys counts
  }
}

TEST(IdTool, RefusesWithTheLibrarysText) {
  const struct {
    const char* option;
    const char* identifier;
    const char* error;
  } cases[] = {
      {"--iri", "", "id cannot be the empty string.\n"},
      {"--filename", "", "id cannot be the empty string.\n"},
      {"--application", "", "tavloApplicationId cannot be the empty string.\n"},
      {"--iri", "http://[bad", "The provided widget id is not a valid URI.\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.option) + ' ' + c.identifier);
    const Outcome outcome = run({"id", c.option, c.identifier});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.error, c.error);
    EXPECT_EQ(outcome.out, "");
  }
}

TEST(IdTool, TakesExactlyOneIdentifier) {
  EXPECT_EQ(run({"id"}).status, 2);
  EXPECT_EQ(run({"id", "--iri", "http://a.example/", "--application", "a"}).status, 2);
}

}  // namespace
}  // namespace nimbrel_test
