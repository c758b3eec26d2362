#include <gmock/gmock.h>
#include <malloc.h>
#include <unistd.h>

#include <fstream>
#include <functional>
#include <limits>

#include "config/ConfigParserFactory.h"
#include "tests/support/Checks.h"
#include "tests/support/CollidingNames.h"
#include "tests/support/ConfigReader.h"
#include "tests/support/RecordDump.h"
#include "util/ParseException.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::config {
namespace {

using namespace test;
using namespace testing;

using Strings = std::vector<std::string>;

constexpr const char* UNKNOWN_ELEMENT =
    "!Error: ConfigParser::processWidgetElements, Found unknown xml element";

/// The ids of the kept elements, in their order.
std::string keptIds(BasicConfig& record) {
  std::string ids;
  for (const Element& element : record.elements()) {
    ids += show(element.getSingleAttributeValue("id"));
  }
  return ids;
}

/// What a document is rejected with, as "line:column: message".
std::string rejection(Reader& reader, const std::string& xml) {
  return rejectionBy<ConfigParser::ConfigException>([&] { reader.document(xml); });
}

TEST(Parser, NamesTheFirstMissingService) {
  expectRows(
      R"(
      xml iri idn unicode => (nothing thrown)  iri idn unicode => xmlParser cannot be NULL
      xml idn unicode => iriParser cannot be NULL  idn unicode => xmlParser cannot be NULL
      xml iri unicode => idnConverter cannot be NULL  => unicodeUtil cannot be NULL
      xml iri idn => unicodeUtil cannot be NULL)",
      [](const std::string& services) {
        const auto has = [&](const char* name) { return services.find(name) != std::string::npos; };
        return thrownBy<std::invalid_argument>([&] {
          NimbrelConfigParser({}, has("xml") ? std::make_shared<util::XmlParserLibXml>() : nullptr,
                              has("iri") ? std::make_shared<util::IRIParser>() : nullptr,
                              has("idn") ? std::make_shared<util::IDNConverter>() : nullptr,
                              has("unicode") ? std::make_shared<util::UnicodeUtilICU>() : nullptr);
        });
      });
}

TEST(Parser, NamesMissingArguments) {
  using Bad = std::invalid_argument;
  Reader reader;
  EXPECT_EQ(thrownBy<Bad>([&] { reader.parse(nullptr, 5, nullptr, nullptr); }),
            "buffer cannot be NULL");
  EXPECT_EQ(thrownBy<Bad>([&] { reader.parse(nullptr, nullptr); }), "path cannot be NULL");
  EXPECT_EQ(thrownBy<Bad>([&] { reader.process(nullptr, {}); }), "document cannot be NULL");
  reader.setError("text");
  reader.setError(nullptr);
  EXPECT_EQ(reader.getErrorText(), "");
}

TEST(Parser, HandsItsArgumentsToTheXmlServiceAndTranslatesOnlyItsRejections) {
  class Xml : public util::XmlParser {
    [[nodiscard]] std::shared_ptr<util::XmlDocument> parseFile(
        const char* path, const char* encoding) const override {
      throw std::runtime_error(std::string(path) + "|" + encoding);
    }
    [[nodiscard]] std::shared_ptr<util::XmlDocument> parseBuffer(
        const char* buffer, unsigned int size, const char* url,
        const char* encoding) const override {
      throw ParseException(std::string(buffer, size) + "|" + url + "|" + encoding, 70001, 8);
    }
  };
  NimbrelConfigParser parser({}, std::make_shared<Xml>(), std::make_shared<util::IRIParser>(),
                             std::make_shared<util::IDNConverter>(),
                             std::make_shared<util::UnicodeUtilICU>());
  EXPECT_EQ(thrownBy<std::runtime_error>([&] { parser.parse("p", "e"); }), "p|e");
  EXPECT_EQ(rejectionBy<ConfigParser::ConfigException>([&] { parser.parse("bytes", 3, "u", "e"); }),
            "70001:8: byt|u|e");
}

TEST(Parser, RejectsWhatIsNoXmlWithItsPosition) {
  Reader reader;
  EXPECT_THAT(rejection(reader, ""), StartsWith("0:0: "));
  EXPECT_THAT(rejection(reader, "<widget>\n<a></b>\n</widget>"),
              AllOf(StartsWith("2:"), Not(StartsWith("2:0:"))));
  EXPECT_THAT(thrownBy<ConfigParser::ConfigException>([&] { reader.parse("/no/file", nullptr); }),
              StartsWith("Cannot open the file"));
}

TEST(Parser, RejectsAnyOtherRootWithItsLine) {
  const std::string extensions = EXTENSION_NAMESPACE;
  const std::pair<std::string, const char*> cases[] = {
      {"<widget/>", "1"},
      {"\n\n<widget\n xmlns=''/>", "3"},
      {"<widget xmlns='" + extensions + "'/>", "1"},
      {"<widget xmlns='http://www.w3.org/ns/widgets/'/>", "1"},
      {"<!--\n--><name xmlns='http://www.w3.org/ns/widgets'><widget/></name>", "2"},
  };
  for (const auto& [xml, line] : cases) {
    SCOPED_TRACE(xml);
    Reader reader;
    EXPECT_EQ(rejection(reader, xml),
              std::string(line) +
                  ":0: Document root is not a 'widget' from 'http://www.w3.org/ns/widgets'.");
    // A fresh record with the document and nothing else stays in the parser.
    EXPECT_NE(reader.record().document(), nullptr);
    EXPECT_THAT(reader.record().getUserAgentLocales(), IsEmpty());
  }
  Reader reader;
  EXPECT_EQ(rejection(reader, "<w:widget xmlns:w='http://www.w3.org/ns/widgets'/>"), "accepted");
  EXPECT_THAT(reader.record().getUserAgentLocales(), ElementsAre("en", "*"));
  EXPECT_THAT(reader.record().elements(), IsEmpty());
}

TEST(Parser, ReadsFilesAndBuffersThroughTheFactory) {
  const std::string path =
      testing::TempDir() + "nimbrel-parser-test-" + std::to_string(::getpid()) + ".xml";
  std::ofstream(path) << widget("<name xml:lang='de'>Schach</name>", "id='urn:x'");
  const auto record = createConfigParser({"de"})->parse(path.c_str(), nullptr);
  std::remove(path.c_str());
  EXPECT_EQ(show(record->getId()) + show(record->getName()), "urn:xde/ltr[de/ltr:Schach]");

  const std::string latin = widget("<name>\xFC</name>");
  const auto size = static_cast<unsigned int>(latin.size());
  const auto other = createConfigParser({})->parse(latin.data(), size, "urn:u", "ISO-8859-1");
  EXPECT_EQ(show(other->getName()), "/ltr[/ltr:\xC3\xBC]");
}

TEST(Parser, VisitsAndKeepsChildrenInTheOrderOfTheLocales) {
  const std::string children =
      "<tavlo:x id='0'/> <tavlo:x id='1' xml:lang='en'/><tavlo:x id='2' xml:lang='en-us'/>"
      "<tavlo:x id='3' xml:lang='fr'/>text<tavlo:x id='4' xml:lang=''/><!-- x -->"
      "<tavlo:x id='5' xml:lang='EN'/><tavlo:x id='6' xml:lang='en'><tavlo:x id='n'/></tavlo:x>"
      "<tavlo:x id='7' lang='en'/><tavlo:x id='8' xml:lang='*'/>";
  const auto visit = [&](const Strings& locales, const std::string& attributes) {
    Reader reader(locales);
    reader.read(children, attributes);
    std::string shown;
    for (const std::string& locale : reader.record().getUserAgentLocales()) {
      shown += locale + " ";
    }
    return shown + keptIds(reader.record());
  };
  EXPECT_EQ(visit({""}, ""), " * 4047");
  // the host's locales | attributes => all locales, what is kept
  expectRows(R"(
      | => * 047  en-us|defaultlocale='en' => en-us en * 216047
      en-us en|defaultlocale='en' => en-us en * 216047  EN xx| => EN xx * 5047
      en-us|defaultlocale='en-US' => en-us en-US * 2047  * en| => * en * 04716047
      en|defaultlocale=' fr ' => en fr * 163047  en|defaultlocale='' => en * 16047
      en|tavlo:defaultlocale='fr' xml:lang='fr' => en * 16047  en en| => en en * 1616047
      |defaultlocale='*' => * * 047047)",
             [&](const std::string& row) {
               const std::size_t bar = row.find('|');
               return visit(zel::util::StringUtil::split(row.substr(0, bar), ' '),
                            row.substr(bar + 1));
             });
}

TEST(Parser, ReportsUnknownElementsAndKeepsAll) {
  for (const char* child :
       {"<span/>", "<Name/>", "<widget/>", "<tavlo:name/>", "<tavlo:param/>", "<network/>",
        "<tavlo:Network/>", "<name xmlns=''/>", "<u:name/>", "<param name='x' value='y'/>"}) {
    SCOPED_TRACE(child);
    Reader reader;
    const auto record = reader.read(std::string(child) + "<name>N</name>");
    // A "param" means something only within a feature, but is known.
    EXPECT_EQ(reader.getErrorText(), child[1] == 'p' ? "" : UNKNOWN_ELEMENT);
    EXPECT_EQ(show(record->getName()), "/ltr[/ltr:N]");
    EXPECT_EQ(reader.record().elements().size(), 2U);
  }
  Reader reader;
  reader.read("<span xml:lang='xx'/>");
  EXPECT_EQ(reader.getErrorText(), "");  // never visited
}

TEST(Parser, CarriesThreeThingsOverAndNothingElse) {
  Reader reader;
  const auto first = reader.read("<content src=''/><span/><name>A</name>",
                                 "id='urn:a' version='1' viewmodes='x' tavlo:applicationId='a'");
  const auto second = reader.read("<content src='b.html'/>");
  EXPECT_FALSE(second->getStartFile());
  EXPECT_EQ(reader.getErrorText(), UNKNOWN_ELEMENT);
  EXPECT_EQ(show(second->getId()) + show(second->getVersion()) + show(second->getName()) +
                show(second->getTavloApplicationId()),
            "----");
  EXPECT_THAT(second->getWindowModes(), IsEmpty());
  EXPECT_THAT(second->getUserAgentLocales(), ElementsAre("en", "*"));
  EXPECT_EQ(show(first->getId()) + show(first->getName()), "urn:a/ltr[/ltr:A]");
}

TEST(Parser, ProcessMayBeGivenPartsOfThePreviousRecord) {
  Reader reader({"en"});
  reader.read("<name xml:lang='de'>D</name><name xml:lang='en'>E</name>", "defaultlocale='de'");
  for (const Strings& expected : {Strings{"en", "de", "*", "*"}, {"en", "de", "*", "*", "*"}}) {
    const auto again =
        reader.process(reader.record().document(), reader.record().getUserAgentLocales());
    EXPECT_THAT(again->getUserAgentLocales(), ElementsAreArray(expected));
    EXPECT_EQ(show(again->getName()), "en/ltr[en/ltr:E]");
  }
  const auto other = reader.process(reader.record().document(), {"de"});
  EXPECT_EQ(show(other->getName()), "de/ltr[de/ltr:D]");
}

TEST(Parser, RecordsOutliveTheirParser) {
  const auto record = read("<tavlo:x a='1'>t</tavlo:x><access origin='*' b='2'/>");
  const Element& element = *record->getElements("x", EXTENSION_NAMESPACE).at(0);
  EXPECT_EQ(show(element.getSingleAttributeValue("a")) + element.getTextContent().c_str(), "1t");
  EXPECT_EQ(show(record->getAccessRequestList()[0].element->getSingleAttributeValue("b")), "2");
}

TEST(Parser, MayBeUsedAgainAfterAThrow) {
  Reader reader;
  const std::string icons = "<icon src='a'/><icon src='b'/>";
  for (const std::string& bad :
       {std::string("<broken"), std::string("<widget/>"),
        widget(icons + "<feature name='no iri'/>"),
        widget(icons + extension("network", asset("maxConnections", "")))}) {
    SCOPED_TRACE(bad);
    EXPECT_ANY_THROW(reader.document(bad));
    const auto record = reader.read(icons + "<icon src='a'/><preference name='p'/>");
    EXPECT_EQ(record->getIcons().size(), 2U);
    EXPECT_EQ(record->getPreferences().size(), 1U);
    EXPECT_EQ(reader.record().elements().size(), 4U);
  }
}

TEST(Parser, HandlersCalledWithoutADocumentSaySo) {
  using P = NimbrelConfigParser;
  const auto node = rootOf(widget(""));
  for (const auto handler :
       {&P::processName, &P::processDescription, &P::processLicense, &P::processAuthor,
        &P::processContent, &P::processIcon, &P::processPreference, &P::processFeature,
        &P::processAccess, &P::processWidgetAttributes}) {
    Reader reader;
    EXPECT_EQ(thrownBy<std::logic_error>([&] { (reader.*handler)(node); }),
              "There is no record: no document has been processed.");
    // Also where an earlier element counts and nothing would be read.
    for (const char* children :
         {"", "<name/><description/><license/><author/><content src='a'/>"}) {
      reader.read(children);
      EXPECT_EQ(thrownBy<std::invalid_argument>([&] { (reader.*handler)(nullptr); }),
                "node cannot be NULL");
    }
  }
}

TEST(Parser, EachHandlerReadsItsElement) {
  using P = NimbrelConfigParser;
  using Handler = std::function<void(P&, const std::shared_ptr<util::XmlNode>&)>;
  const std::pair<Handler, std::string> cases[] = {
      {&P::processName, "<name short='s'>n</name>"},
      {&P::processDescription, "<description>d</description>"},
      {&P::processLicense, "<license href='a:b'>l</license>"},
      {&P::processAuthor, "<author email='e'>a</author>"},
      {&P::processContent, "<content src='c'/>"},
      {&P::processIcon, "<icon src='i'/>"},
      {&P::processPreference, "<preference name='p'/>"},
      {&P::processFeature, "<feature name='a:b'/>"},
      {&P::processAccess, "<access origin='*'/>"},
      {&P::processCookieJar,
       "<tavlo:cookiejar>" + asset("persistent", "true") + "</tavlo:cookiejar>"},
      {&P::processNetwork, "<tavlo:network>" + asset("maxConnections", "3") + "</tavlo:network>"},
      {&P::processLocalResources, "<tavlo:resources>" + asset("a", "b") + "</tavlo:resources>"},
      {&P::processAuth, "<tavlo:auth>" + asset("k", "token") + "</tavlo:auth>"},
      {&P::processGestures,
       "<tavlo:gestures>" + named("param", "pinchzoom", "yes") + "</tavlo:gestures>"},
      {&P::processPermissions,
       "<tavlo:permissions>" + named("permission", "p", "no") + "</tavlo:permissions>"},
      {&P::processChrome, "<tavlo:chrome>" + asset("configureSearchBar", "c") + "</tavlo:chrome>"},
      {&P::processSettings,
       "<tavlo:settings>" + named("setting", "internetRequired", "yes") + "</tavlo:settings>"},
      {&P::processMessaging, "<tavlo:messaging>" + named("app", "a", "yes") + "</tavlo:messaging>"},
      {&P::processExport, "<tavlo:export resource='r'/>"},
  };
  for (const auto& [handler, element] : cases) {
    SCOPED_TRACE(element);
    Reader whole;
    whole.read(element);
    whole.record().elements().clear();
    Reader single;
    single.read("");
    const std::string before = dumpOf(single.record());
    handler(single, rootOf(widget(element))->getFirstElementChild());
    EXPECT_EQ(dumpOf(single.record()), dumpOf(whole.record()));
    EXPECT_NE(dumpOf(single.record()), before);
  }
}

/// A host's IRI parser: it looks at the record before it answers, and may throw.
class LookingIRIParser : public util::IRIParser {
 public:
  LookingIRIParser(const Reader& reader, std::vector<std::string>& seen)
      : reader_(reader), seen_(seen) {}

  bool tryParse(const char* text, util::Option<util::IRI>& out) const override {
    const BasicConfig& record = std::as_const(reader_.record());
    seen_.push_back(std::string(text) + ": " + show(record.getId()) + " " +
                    std::to_string(record.getUserAgentLocales().size()));
    if (std::string_view(text) == "urn:throw") {
      throw std::runtime_error("no");
    }
    return IRIParser::tryParse(text, out);
  }

 private:
  const Reader& reader_;
  std::vector<std::string>& seen_;
};

/// A host's Unicode service: it says when it is asked.
class LoudUnicodeUtil : public util::UnicodeUtilICU {
 public:
  explicit LoudUnicodeUtil(std::vector<std::string>& seen) : seen_(seen) {}
  [[nodiscard]] bool isWhiteSpace(char32_t codePoint) const override {
    seen_.emplace_back("white space?");
    return UnicodeUtilICU::isWhiteSpace(codePoint);
  }

 private:
  std::vector<std::string>& seen_;
};

TEST(Parser, ServicesOfAHostSeeWhatWasReadBefore) {
  class Host : public Reader {
   public:
    explicit Host(std::vector<std::string>& seen) {
      iriParser = std::make_shared<LookingIRIParser>(*this, seen);
      rules = ConfigRules(std::make_shared<LoudUnicodeUtil>(seen));
    }
  };
  std::vector<std::string> seen;
  Host host(seen);
  host.read("<author href='urn:b'>\xC2\xA0</author><license href='urn:c'>\xC2\xA0</license>",
            "id='urn:a' defaultlocale='de'");
  EXPECT_THAT(seen,
              ElementsAre("urn:a: urn:a 3", "urn:b: urn:a 3", "white space?", "urn:c: urn:a 3"));
  // What was stored before a service throws stays; what comes behind it is not read.
  EXPECT_EQ(thrownBy<std::runtime_error>([&] {
              host.read("<name>n</name>", "id='urn:throw' version='1' defaultlocale='de'");
            }),
            "no");
  EXPECT_THAT(host.record().userAgentLocales(), ElementsAre("en", "de", "*"));
  EXPECT_EQ(show(host.record().version()) + show(host.record().name()), "--");
  EXPECT_EQ(thrownBy<std::runtime_error>([&] { host.read("<author href='urn:throw'/>"); }), "no");
  EXPECT_FALSE(host.record().author());
}

TEST(Parser, ALongListDoesNotCostTheSquareOfItsLength) {
  const auto listOf = [](const char* before, const char* after) {
    return [before, after](std::size_t count) {
      std::string list;
      for (std::size_t i = 0; i < count; ++i) {
        list += before + std::to_string(i) + after;
      }
      return list;
    };
  };
  const auto modes = listOf("k", " ");
  const auto inAttribute = [&](std::size_t count) {
    return widget("", "viewmodes='" + modes(count) + "'");
  };
  const auto inChildren = [&](const char* before) {
    return [list = listOf(before, "'/>")](std::size_t count) { return widget(list(count)); };
  };
  const auto read = [](const std::string& document) { Reader().document(document); };
  expectCostInProportion(4000, inAttribute, read);
  for (const char* element : {"<icon src='", "<preference name='"}) {
    SCOPED_TRACE(element);
    expectCostInProportion(4000, inChildren(element), read);
  }
  const std::vector<std::string> names = collidingNames(8 * 4000 / SLOWNESS);
  const auto colliding = [&](std::size_t count) {
    std::string children;
    for (std::size_t i = 0; i < count; ++i) {
      children += "<preference name='" + names[i] + "'/>";
    }
    return widget(children);
  };
  expectCostInProportion(4000, colliding, read);
}

TEST(Parser, ARecordTakesAtMost64TimesTheMemoryOfItsDocument) {
  std::string children = "<description xml:lang='" + std::string(128, 'x') + "'>";
  for (int i = 0; i < 100'000; ++i) {
    children += "x<b/>";
  }
  const std::string document = widget(children + "</description>");
  const auto held = [] { return mallinfo2().uordblks + mallinfo2().hblkhd; };
  Reader reader({std::string(128, 'x')});
  const std::size_t before = held();
  const auto record = reader.document(document);
  const std::size_t taken = held() - before;
  EXPECT_LT(taken, 64 * document.size());
  EXPECT_TRUE(taken > 50 * document.size() || before == 0);  // the sanitizers' heap is not counted
}

}  // namespace
}  // namespace orvane::nimbrel::config
