#include <functional>

#include "config/ConfigParserFactory.h"
#include "tests/reliability/FaultyMemory.h"
#include "tests/support/ConfigReader.h"
#include "tests/support/RecordDump.h"
#include "util/HostUriMunger.h"
#include "util/PortableFilenameMunger.h"
#include "widgetid/BasicWidgetId.h"
#include "widgetid/FilenameWidgetIdParser.h"
#include "widgetid/LocalizedElementParser.h"
#include "widgetid/PelloWidgetIdParser.h"
#include "widgetid/ProductionWidgetId.h"

namespace orvane::nimbrel::test {
namespace {

using util::LocalizableString;
using zel::config::BasicWidgetId;

const char* const EVERYTHING = NIMBREL_EXAMPLES "/config.xml";

/// Parses with each allocation failing in turn, and the same again without a failure after each.
/// `parse` returns the record of the reader that it is given.
long failEachAllocationOfAParse(
    const std::function<std::shared_ptr<config::Config>(Reader&)>& parse) {
  Reader reader({"de", "en"});
  (void)parse(reader);  // from now on it has seen a content element
  std::shared_ptr<config::Config> earlier = parse(reader);
  const std::string expected = dumpOf(reader.record());
  std::shared_ptr<config::Config> result;
  return failEachAllocation(
      [] {}, [&] { result = parse(reader); },
      [&](bool threw) {
        if (threw) {
          EXPECT_EQ(result, nullptr);
          parse(reader);
        }
        EXPECT_EQ(difference(dumpOf(reader.record()), expected), "");
        EXPECT_EQ(difference(dumpOf(dynamic_cast<config::BasicConfig&>(*earlier)), expected), "");
        result.reset();
        parse(reader);  // so that what is released next is known
      });
}

TEST(OutOfMemory, AParseThrowsAndSucceedsTheNextTime) {
  const std::string xml = contentOf(EVERYTHING);
  EXPECT_GT(failEachAllocationOfAParse([&](Reader& reader) { return reader.document(xml); }), 50);
  EXPECT_GT(
      failEachAllocationOfAParse([](Reader& reader) { return reader.parse(EVERYTHING, nullptr); }),
      50);
}

TEST(OutOfMemory, ConversionsAndEntitiesFailAsWell) {
  const std::string latin1 =
      "<?xml version='1.0' encoding='ISO-8859-1'?>"
      "<!DOCTYPE widget [<!ENTITY a 'x<name>\xFC</name>'><!ATTLIST widget id CDATA 'urn:a'>]>" +
      widget("&a;&a;<access origin='http://b\xFC" + std::string("cher.example'/>"));
  EXPECT_GT(failEachAllocationOfAParse([&](Reader& reader) { return reader.document(latin1); }),
            30);
  const std::string utf8 = widget("<name>\xC3\xBC</name>");
  EXPECT_GT(failEachAllocationOfAParse([&](Reader& reader) {
              return reader.parse(utf8.data(), static_cast<unsigned int>(utf8.size()), nullptr,
                                  "UTF-8");
            }),
            30);
  std::string utf16;
  for (const char c : "\xFE\xFF" + widget("<name>x</name>")) {
    utf16 += utf16.size() < 2 ? std::string(1, c) : std::string{'\0', c};
  }
  EXPECT_GT(failEachAllocationOfAParse([&](Reader& reader) { return reader.document(utf16); }), 30);
}

// libxml2 has to make its buffers larger for these.
TEST(OutOfMemory, LongPiecesFailAsWell) {
  const std::string piece(30'000, 'x');
  const std::string document =
      widget("<name short='" + piece + "'>" + piece + "</name><!--" + piece + "-->");
  for (const char* declaration : {"", "<?xml version='1.0' encoding='ISO-8859-1'?>"}) {
    EXPECT_GT(failEachAllocationOfAParse(
                  [&](Reader& reader) { return reader.document(declaration + document); }),
              30);
  }
}

TEST(OutOfMemory, RejectionsAreRejectionsOrTheLackOfMemory) {
  const std::string cut = widget("<name>x</name>").substr(0, 80);
  Reader reader;
  const auto rejected = [&] {
    try {
      reader.document(cut);
    } catch (const config::ConfigParser::ConfigException&) {
    }
  };
  rejected();  // starts libxml2
  EXPECT_GT(failEachAllocation([] {}, rejected, [](bool) {}), 20);
  EXPECT_NE(reader.read("<name>x</name>"), nullptr);
}

TEST(OutOfMemory, ConstructionLeaksNothing) {
  std::shared_ptr<config::ConfigParser> parser;
  const std::vector<std::string> locales = {"a locale that is too long for a string's own room"};
  EXPECT_GT(failEachAllocation([] {}, [&] { parser = config::createConfigParser(locales); },
                               [&](bool threw) {
                                 EXPECT_EQ(parser == nullptr, threw);
                                 parser.reset();
                               }),
            2);
}

// Means most in a process of its own, where ICU has not been started before.
TEST(OutOfMemory, IcuStartsLaterWhenItCannotStartNow) {
  const std::string host =
      "b\xC3\xBC"
      "cher.example";
  for (long n = 1; n < 20; ++n) {
    std::string ascii;
    failAllocation(n);
    try {
      (void)util::IDNConverter().tryConvertToASCII(host.c_str(), ascii);
    } catch (const std::bad_alloc&) {
    }
    stopFailing();
    EXPECT_TRUE(util::IDNConverter().tryConvertToASCII(host.c_str(), ascii));
    EXPECT_EQ(ascii, "xn--bcher-kva.example");
  }
}

}  // namespace
}  // namespace orvane::nimbrel::test
