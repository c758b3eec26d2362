#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

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

std::string contentsOf(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Parses with each allocation failing in turn, and the same again without a failure after each.
/// `parse` returns the record of the reader that it is given.
long failEachAllocationOfAParse(
    const std::function<std::shared_ptr<config::Config>(Reader&)>& parse) {
  Reader reader({"de", "en"});
  (void)parse(reader);  // from now on it has seen a content element
  std::shared_ptr<config::Config> earlier = parse(reader);
  const std::string expected = RecordDump::of(reader.record());
  std::shared_ptr<config::Config> result;
  return failEachAllocation(
      [] {}, [&] { result = parse(reader); },
      [&](bool threw) {
        if (threw) {
          EXPECT_EQ(result, nullptr);
          parse(reader);
        }
        EXPECT_EQ(RecordDump::of(reader.record()), expected);
        EXPECT_EQ(RecordDump::of(dynamic_cast<config::BasicConfig&>(*earlier)), expected);
        result.reset();
        parse(reader);  // so that what is released next is known
      });
}

TEST(OutOfMemory, AParseThrowsAndSucceedsTheNextTime) {
  const std::string xml = contentsOf(EVERYTHING);
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

TEST(OutOfMemory, RefusalsAreRefusalsOrTheLackOfMemory) {
  const std::string cut = widget("<name>x</name>").substr(0, 80);
  Reader reader;
  const auto refused = [&] {
    try {
      reader.document(cut);
    } catch (const config::ConfigParser::ConfigException&) {
    }
  };
  refused();  // starts libxml2
  EXPECT_GT(failEachAllocation([] {}, refused, [](bool) {}), 20);
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
            4);
}

TEST(OutOfMemory, IdentityDerivationsThrowAndSucceedTheNextTime) {
  const auto filename = std::make_shared<zel::util::PortableFilenameMunger>();
  const auto host = std::make_shared<zel::util::HostUriMunger>();
  const std::string longPath(300, '/');
  const struct {
    const char* id;
    bool isUri;
  } cases[] = {
      {"https://apps.example.org/games/chess and checkers?version=1", true},
      {"https://b\xC3\xBC"
       "cher.example/a/long/enough/path",
       true},
      {"a/relative/identifier/that/is/resolved", true},
      {longPath.c_str(), true},
      {"an ordinary file name of some length.wgt", false},
      {longPath.c_str(), false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.id);
    const auto derive = [&] {
      std::shared_ptr<zel::config::WidgetIdParser> parser;
      if (c.isUri) {
        parser = std::make_shared<zel::config::PelloWidgetIdParser>(host, filename);
      } else {
        parser = std::make_shared<zel::config::FilenameWidgetIdParser>(filename);
      }
      return std::make_unique<BasicWidgetId>(c.id, parser);
    };
    const std::unique_ptr<BasicWidgetId> expected = derive();
    std::unique_ptr<BasicWidgetId> result;
    const auto verify = [&](bool threw) {
      if (threw) {
        EXPECT_EQ(result, nullptr);
        result = derive();
      }
      EXPECT_STREQ(result->toAuthority(), expected->toAuthority());
      EXPECT_STREQ(result->toDirectoryName(), expected->toDirectoryName());
      result.reset();
    };
    EXPECT_GT(failEachAllocation([] {}, [&] { result = derive(); }, verify), 4);
  }
  std::unique_ptr<zel::config::ProductionWidgetId> production;
  EXPECT_GT(failEachAllocation([] {},
                               [&] {
                                 production = std::make_unique<zel::config::ProductionWidgetId>(
                                     "anidthatistoolongforastringsroom");
                               },
                               [&](bool threw) {
                                 EXPECT_EQ(production == nullptr, threw);
                                 production.reset();
                               }),
            1);
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

TEST(OutOfMemory, LocalisedTextsThrowAndSucceedTheNextTime) {
  const std::string xml = contentsOf(EVERYTHING);
  const auto read = [&] {
    return zel::config::LocalizedElementParser::getLocalizedElementMap(
        xml.data(), static_cast<unsigned int>(xml.size()), "description", true);
  };
  const auto expected = read();
  std::map<std::string, std::string> result;
  EXPECT_GT(failEachAllocation([&] { result.clear(); }, [&] { result = read(); },
                               [&](bool threw) { EXPECT_EQ((threw ? read() : result), expected); }),
            30);
}

// The strong guarantee: what was there before the call is there after it.
TEST(OutOfMemory, TextsAreLeftAsTheyWere) {
  const auto icu = std::make_shared<util::UnicodeUtilICU>();
  const std::string words =
      "  some \xC2\xA0 words that do not fit into a string's own room \xE3\x80\x80 ";
  LocalizableString before(icu, LocalizableString::LTR, "a-language-tag-that-is-quite-long");
  before.append(words);
  before.append(words, LocalizableString::RTL, "another-language-tag-of-some-length");
  const LocalizableString other = before;
  const struct {
    const char* name;
    std::function<void(LocalizableString&)> change;
    long least;
  } cases[] = {
      {"append", [&](auto& text) { text.append(words); }, 2},
      {"append run", [&](auto& text) { text.append(words, LocalizableString::LRO, words); }, 2},
      {"append other", [&](auto& text) { text.append(other); }, 4},
      {"append itself", [&](auto& text) { text.append(text); }, 4},
      {"normalise", [&](auto& text) { text.normalizeWhitespace(); }, 2},
      {"trim", [&](auto& text) { text.trim(); }, 0},
      {"language", [&](auto& text) { text.setLanguageTag(words); }, 1},
      {"assign", [&](auto& text) { text = other; }, 4},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    std::unique_ptr<LocalizableString> text;
    const auto prepare = [&] { text = std::make_unique<LocalizableString>(before); };
    const auto verify = [&](bool threw) {
      if (threw) {
        EXPECT_EQ(show(*text), show(before));
        EXPECT_STREQ(text->c_str(), before.c_str());
      }
    };
    EXPECT_GE(failEachAllocation(
                  prepare, [&] { c.change(*text); }, verify),
              c.least);
  }
}

TEST(OutOfMemory, OutputsAreLeftAsTheyWere) {
  const std::string before = "what was there before, too long for a string's own room";
  util::Option<util::IRI> iri;
  const auto prepareIri = [&] {
    util::IRI old;
    old.scheme = before;
    iri = old;
  };
  EXPECT_GT(
      failEachAllocation(
          prepareIri,
          [&] {
            EXPECT_TRUE(util::IRIParser().tryParse(
                "https://a-user-of-some-length@a-host-of-some-length/and/quite/a/long/path", iri));
          },
          [&](bool threw) { EXPECT_EQ(iri.get().scheme, threw ? before : "https"); }),
      2);

  std::string text;
  const auto prepareText = [&] { text = before; };
  const auto untouched = [&](bool threw) { EXPECT_EQ(text == before, threw); };
  const util::IDNConverter idn;
  ASSERT_TRUE(
      idn.tryConvertToASCII("b\xC3\xBC"
                            "cher.example",
                            text));  // starts ICU
  EXPECT_GT(failEachAllocation(
                prepareText,
                [&] {
                  EXPECT_TRUE(
                      idn.tryConvertToASCII("a-host-of-some-length.b\xC3\xBC"
                                            "cher.example",
                                            text));
                },
                untouched),
            2);
  zel::util::PortableFilenameMunger munger;
  EXPECT_GT(failEachAllocation(
                prepareText, [&] { munger.munge(text); }, untouched),
            0);
}

}  // namespace
}  // namespace orvane::nimbrel::test
