#include <cstdint>
#include <cstring>

#include "tests/support/Checks.h"
#include "widgetid/BasicWidgetId.h"
#include "widgetid/PelloWidgetIdParser.h"
#include "widgetid/ProductionWidgetId.h"
#include "widgetid/WidgetId.h"
#include "widgetid/WidgetIdError.h"

namespace orvane::zel::config {
namespace {

using nimbrel::test::thrownBy;

class FakeParser : public WidgetIdParser {
 public:
  std::string deriveWidgetIdAuthority(const char* widgetId) const override {
    calls += 'a';
    if (fails) {
      throw WidgetIdError("no authority");
    }
    return std::string("authority of ") + widgetId;
  }
  std::string deriveDirectoryName(const char* widgetId) const override {
    calls += 'd';
    return std::string("directory of ") + widgetId;
  }

  bool fails = false;
  mutable std::string calls;
};

TEST(BasicWidgetId, RejectsBadArgumentsInOrderAndStopsAtTheFirstFault) {
  const auto parser = std::make_shared<FakeParser>();
  using Parser = std::shared_ptr<WidgetIdParser>;
  const auto rejection = [](const char* id, const Parser& idParser) {
    return thrownBy<std::invalid_argument>([&] { BasicWidgetId(id, idParser); });
  };
  for (const Parser& any : {Parser(), Parser(parser)}) {
    EXPECT_EQ(rejection(nullptr, any), "id cannot be NULL.");
    EXPECT_EQ(rejection("", any), "id cannot be the empty string.");
  }
  EXPECT_EQ(rejection("x", nullptr), "idParser cannot be NULL.");
  EXPECT_EQ(parser->calls, "");
  parser->fails = true;
  EXPECT_EQ(thrownBy<WidgetIdError>([&] { BasicWidgetId("x", parser); }), "no authority");
  EXPECT_EQ(parser->calls, "a");
}

TEST(BasicWidgetId, AsksItsParserOnceForEachNameAndDoesNotKeepIt) {
  const auto parser = std::make_shared<FakeParser>();
  const BasicWidgetId id("x", parser);
  EXPECT_EQ(parser->calls, "ad");
  EXPECT_EQ(parser.use_count(), 1);

  const BasicWidgetId copy = id;
  for (const WidgetId* each : {&id, &copy}) {
    EXPECT_STREQ(each->toString(), "x");
    EXPECT_STREQ(each->toAuthority(), "authority of x");
    EXPECT_STREQ(each->toDirectoryName(), "directory of x");
    EXPECT_STREQ(each->topLevelApplicationDataDirectory(), ".mirelda_sandbox");
  }
  EXPECT_EQ(parser->calls, "ad");
}

TEST(ProductionWidgetId, IsItsOwnNameUnchanged) {
  for (const char* text : {"0123abc", "../A b/%41."}) {
    const ProductionWidgetId id(text);
    for (const char* name : {id.toString(), id.toAuthority(), id.toDirectoryName()}) {
      EXPECT_STREQ(name, text);
    }
    EXPECT_STREQ(id.topLevelApplicationDataDirectory(), ".mirelda");
  }
  EXPECT_EQ(thrownBy<std::invalid_argument>([] { ProductionWidgetId(nullptr); }),
            "tavloApplicationId cannot be NULL.");
  EXPECT_EQ(thrownBy<std::invalid_argument>([] { ProductionWidgetId(""); }),
            "tavloApplicationId cannot be the empty string.");
}

#ifdef __x86_64__
template <typename Member>
std::uintptr_t slot(Member member) {
  std::uintptr_t word = 0;  // Itanium C++ ABI: 1 plus the offset in the virtual table
  std::memcpy(&word, &member, sizeof word);
  return (word - 1) / sizeof(void*);
}

// Compiled hosts call through these slots; a destructor takes the first two.
TEST(WidgetId, KeepsItsVirtualSlots) {
  EXPECT_EQ(slot(&WidgetId::toString), 2U);
  EXPECT_EQ(slot(&WidgetId::toAuthority), 3U);
  EXPECT_EQ(slot(&WidgetId::toDirectoryName), 4U);
  EXPECT_EQ(slot(&WidgetId::topLevelApplicationDataDirectory), 5U);
  EXPECT_EQ(slot(&WidgetIdParser::deriveWidgetIdAuthority), 2U);
  EXPECT_EQ(slot(&WidgetIdParser::deriveDirectoryName), 3U);
  EXPECT_EQ(slot(&PelloWidgetIdParser::createNormalizedWidgetId), 4U);
}
#endif

}  // namespace
}  // namespace orvane::zel::config
