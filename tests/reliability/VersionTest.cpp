// A process whose libxml2 is not the one that the library was built for.

#include <libxml/parser.h>

#include "tests/support/Checks.h"
#include "util/ParseException.h"
#include "util/XmlParserLibXml.h"
#include "util/xml/LibXml.h"

// Found before that of libxml2 itself; a function in version 2.9.
#define VISIBLE __attribute__((visibility("default")))
#ifdef xmlParserVersion
VISIBLE const char** __xmlParserVersion() {  // NOLINT(clang-diagnostic-reserved-identifier)
  static const char* version = "20901-something";
  return &version;
}
#else
extern "C" VISIBLE const char* const xmlParserVersion = "20901-something";
#endif

namespace orvane::nimbrel::test {
namespace {

using util::internal::libxml::canRun;

TEST(Version, OfAnotherLibxml2IsRejected) {
  EXPECT_EQ(thrownBy<ParseException>(
                [] { (void)util::XmlParserLibXml().parse("<a/>", 4, nullptr, nullptr); }),
            "libxml2 of version 20901 cannot be used by a library that was built for version " +
                std::to_string(LIBXML_VERSION));
}

TEST(Version, FitsWithinOneLayoutOfStructures) {
  const struct {
    long compiledFor;
    long running;
    bool fits;
  } cases[] = {{20914, 20914, true}, {20914, 20913, false}, {20914, 21309, true},
               {21309, 20914, true}, {20914, 21400, false}, {21400, 21309, false},
               {21400, 21504, true}, {21504, 21400, true},  {21504, 30000, false},
               {20914, 0, false}};
  for (const auto& c : cases) {
    EXPECT_EQ(canRun(c.compiledFor, c.running), c.fits) << c.compiledFor << ' ' << c.running;
  }
}

}  // namespace
}  // namespace orvane::nimbrel::test
