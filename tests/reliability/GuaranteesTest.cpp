// What each operation promises for the case that it throws, held by letting each of its allocations
// fail in turn: nothing has changed (strong), or what is left is usable and the same call then
// gives what it gives undisturbed (basic). Parses of whole documents are in OutOfMemoryTest.cpp.
#include <gmock/gmock.h>

#include <functional>

#include "tests/reliability/FaultyMemory.h"
#include "tests/support/ConfigReader.h"
#include "tests/support/RecordDump.h"
#include "util/HostUriMunger.h"
#include "util/PortableFilenameMunger.h"
#include "util/StringUtil.h"
#include "widgetid/BasicWidgetId.h"
#include "widgetid/FilenameWidgetIdParser.h"
#include "widgetid/LocalizedElementParser.h"
#include "widgetid/PelloWidgetIdParser.h"
#include "widgetid/ProductionWidgetId.h"

namespace orvane::nimbrel::test {
namespace {

using config::NimbrelConfigParser;
using util::LocalizableString;
using util::Option;

enum Guarantee { BASIC, NONE_IS_LEFT, STRONG };

template <typename Object>
struct Operation {
  const char* name;
  long least;  // this many allocations at least, which some compilers leave out
  std::function<void(Object&)> call;
};

/// Holds each operation to the guarantee on an object that `make` makes anew each time, of which
/// `show` tells all that can be seen.
template <typename Object>
void hold(Guarantee guarantee, const std::function<std::unique_ptr<Object>()>& make,
          const std::function<std::string(Object&)>& show,
          const std::vector<Operation<Object>>& operations) {
  for (const Operation<Object>& operation : operations) {
    SCOPED_TRACE(operation.name);
    std::unique_ptr<Object> object = make();
    const std::string before = show(*object);
    operation.call(*object);
    const std::string after = show(*object);
    long blocks = 0;
    const auto prepare = [&] {
      object.reset();
      blocks = liveBlocks();
      object = make();
    };
    const auto verify = [&](bool threw) {
      if (threw) {
        if (guarantee != BASIC) {
          EXPECT_EQ(difference(show(*object), guarantee == STRONG ? before : "-"), "");
        }
        operation.call(*object);
      }
      EXPECT_EQ(difference(show(*object), after), "");
      object.reset();
      EXPECT_EQ(liveBlocks(), blocks) << "blocks leaked";
    };
    EXPECT_GE(failEachAllocation(
                  prepare, [&] { operation.call(*object); }, verify),
              operation.least);
  }
}

/// The same for operations that do nothing but give a result: it is put where another was.
void holdResults(const std::vector<std::pair<const char*, std::function<std::string()>>>& calls) {
  for (const auto& [name, call] : calls) {
    const Operation<std::string> operation = {name, 1,
                                              [&result = call](auto& out) { out = result(); }};
    hold<std::string>(
        STRONG, [] { return std::make_unique<std::string>("before"); },
        [](std::string& text) { return text; }, {operation});
  }
}

const std::string LONG = "  what does \xC2\xA0 not fit within a string itself \xE3\x80\x80 ";
const std::string HOST = "a-host-of-some-length.b\xC3\xBC" + std::string("cher.example");

template <typename T>
Option<T> some(const T& value) {
  Option<T> option;
  option = value;
  return option;
}

TEST(Guarantees, TextsThatChangeAreStrong) {
  LocalizableString before(std::make_shared<util::UnicodeUtilICU>(), LocalizableString::LTR, LONG);
  before.append(LONG);
  before.append(LONG, LocalizableString::RTL, LONG);
  const LocalizableString other = before;
  hold<LocalizableString>(
      STRONG, [&] { return std::make_unique<LocalizableString>(before); },
      [](LocalizableString& text) { return test::show(text) + text.c_str(); },
      {{"append", 2, [](auto& text) { text.append(LONG); }},
       {"append run", 2, [](auto& text) { text.append(LONG, LocalizableString::LRO, LONG); }},
       {"append other", 4, [&](auto& text) { text.append(other); }},
       {"append itself", 4, [](auto& text) { text.append(text); }},
       {"normalise", 2, [](auto& text) { text.normalizeWhitespace(); }},
       {"trim", 0, [](auto& text) { text.trim(); }},
       {"language", 1, [](auto& text) { text.setLanguageTag(LONG + LONG); }},
       {"assign", 4, [&](auto& text) { text = other; }}});
}

TEST(Guarantees, OptionsAreBasicAndNoneIsLeft) {
  const Option<std::string> other = some(LONG);
  const std::string value = LONG;
  hold<Option<std::string>>(
      NONE_IS_LEFT,
      [] { return std::make_unique<Option<std::string>>(some<std::string>("before")); },
      [](auto& option) { return test::show(option); },
      {{"assign", 1, [&](auto& option) { option = other; }},
       {"assign a value", 1, [&](auto& option) { option = value; }},
       {"emplace", 1, [&](auto& option) { option.emplace(value.c_str()); }}});
}

TEST(Guarantees, ResultsInAnArgumentAreStrong) {
  hold<Option<util::IRI>>(
      STRONG,
      [] {
        util::IRI before;
        before.scheme = LONG;
        return std::make_unique<Option<util::IRI>>(some(before));
      },
      [](auto& iri) { return iri.get().scheme + iri.get().host + iri.get().path; },
      {{"tryParse", 1, [](auto& iri) {
          EXPECT_TRUE(util::IRIParser().tryParse("x://u@a-host-of-some-length/and/a/path", iri));
        }}});
  const util::IDNConverter idn;
  std::string ascii;
  ASSERT_TRUE(idn.tryConvertToASCII(HOST.c_str(), ascii));  // starts ICU
  hold<std::string>(
      STRONG, [] { return std::make_unique<std::string>(LONG); },
      [](std::string& text) { return text; },
      {{"host", 1, [&](auto& out) { EXPECT_TRUE(idn.tryConvertToASCII(HOST.c_str(), out)); }},
       {"literal", 1,
        [&](auto& out) { EXPECT_TRUE(idn.tryConvertToASCII("[1:2:3:4:5:6:7:8]", out)); }},
       {"trim", 0, [](auto& text) { zel::util::StringUtil::trim(text); }},
       {"squeeze", 0, [](auto& text) { zel::util::StringUtil::squeeze(text); }},
       {"munge", 1, [](auto& text) { zel::util::PortableFilenameMunger().munge(text); }}});
}

const std::string WORDS = "='" + LONG + "'";
const std::string RICH =  // what every operation that reads can be asked
    "<e xmlns='urn:a-namespace-of-some-length' xml:lang" + WORDS + " dir='rtl' a" + WORDS + ">" +
    LONG + "<an-element-with-a-long-name/></e>";

TEST(Guarantees, WhatIsReadOfADocumentLeavesNothing) {
  const auto node = rootOf(RICH);
  const auto long_ = node->getFirstElementChild();
  const config::ConfigRules rules(std::make_shared<util::UnicodeUtilICU>());
  const config::Element element(node, rules);
  Reader reader;
  reader.read("<name>x</name><name>y</name>");
  const auto localized = [] {
    const std::string xml = widget("<name xml:lang" + WORDS + ">" + LONG + "</name>");
    std::string shown;
    for (const auto& [language, text] : zel::config::LocalizedElementParser::getLocalizedElementMap(
             xml.data(), static_cast<unsigned int>(xml.size()), "name", true)) {
      shown += language + text;
    }
    return shown;
  };
  holdResults({
      {"XmlParser", [] { return rootOf(RICH)->getName(); }},
      {"getName", [&] { return long_->getName(); }},
      {"getNamespace", [&] { return show(node->getNamespace()); }},
      {"getAttribute", [&] { return show(node->getAttribute("a")); }},
      {"getAttribute of none", [&] { return show(node->getAttribute("a", nullptr)); }},
      {"getXmlLang", [&] { return node->getXmlLang(); }},
      {"getContent", [&] { return show(node->firstChild()->getContent()); }},
      {"getChildren", [&] { return std::to_string(node->getChildren().size()) + LONG; }},
      {"split", [] { return zel::util::StringUtil::split(LONG, ' ').back() + LONG; }},
      {"squeezeAndTrim", [] { return zel::util::StringUtil::squeezeAndTrim(LONG); }},
      {"rules' attribute", [&] { return show(rules.getSingleAttributeValue(node, nullptr, "a")); }},
      {"displayable",
       [&] { return show(rules.getSingleDisplayableAttributeValue(node, nullptr, "a")); }},
      {"rules' text", [&] { return show(rules.getTextContent(node, true)); }},
      {"keywords", [&] { return rules.parseListOfKeywords(LONG.c_str()).back() + LONG; }},
      {"Element::getName", [&] { return show(config::Element(long_, rules).getName()); }},
      {"Element::getNamespace", [&] { return show(element.getNamespace()); }},
      {"Element::getTextContent", [&] { return show(element.getTextContent()); }},
      {"Element's attribute", [&] { return show(element.getSingleAttributeValue("a")); }},
      {"Element's displayable",
       [&] { return show(element.getSingleDisplayableAttributeValue("a")); }},
      {"getElements",
       [&] {
         const auto names = reader.record().getElements("name", config::W3C_WIDGETS_NAMESPACE);
         return std::to_string(names.size()) + LONG;
       }},
      {"localised", localized},
  });
}

TEST(Guarantees, NodesAreHandedOutWithoutAnAllocation) {
  const auto node = rootOf(RICH);
  failAllocation(1);
  const auto same = node->getFirstElementChild()->getParent();
  const auto text = node->firstChild()->share();
  EXPECT_FALSE(stopFailing());
  EXPECT_EQ(same, node);
}

TEST(Guarantees, IdentitiesLeaveNothing) {
  const auto filename = std::make_shared<zel::util::PortableFilenameMunger>();
  const auto host = std::make_shared<zel::util::HostUriMunger>();
  const auto uris = std::make_shared<zel::config::PelloWidgetIdParser>(host, filename);
  const auto files = std::make_shared<zel::config::FilenameWidgetIdParser>(filename);
  const auto names = [](const zel::config::WidgetId& id) {
    return std::string(id.toString()) + id.toAuthority() + id.toDirectoryName();
  };
  const std::string path = "https://" + HOST + "/chess and checkers?version=1";
  const std::string tooLong(300, '/');
  std::vector<std::pair<const char*, std::function<std::string()>>> calls = {
      {"HostUriMunger", [&] { return host->munge(HOST.c_str()); }},
      {"its address", [&] { return host->munge("[2001:0db8:0:0:0:0:0:00ab]") + LONG; }},
      {"production", [&] { return names(zel::config::ProductionWidgetId(LONG.c_str())); }},
      {"normalised", [&] { return uris->createNormalizedWidgetId(path.c_str(), true); }}};
  for (const char* id : {path.c_str(), "a/relative/identifier/that/is/resolved", tooLong.c_str()}) {
    calls.emplace_back(id, [&, id] { return names(zel::config::BasicWidgetId(id, uris)); });
  }
  for (const char* id : {"an ordinary file name of some length.wgt", tooLong.c_str()}) {
    calls.emplace_back(id, [&, id] { return names(zel::config::BasicWidgetId(id, files)); });
  }
  holdResults(calls);
}

const std::string NAME_AND_CONTENT = "<name short" + WORDS + ">" + LONG + "</name><content src" +
                                     WORDS + " type" + WORDS + " encoding" + WORDS + "/>";
const std::string W3C =
    "<description>" + LONG + "</description><license href='https://example.org/terms/of/use'>" +
    LONG + "</license><author email" + WORDS + " href='https://example.org/somebody'>" + LONG +
    "</author><icon src" + WORDS + " width='1'/><preference name" + WORDS + " value" + WORDS +
    "/><feature name='https://example.org/a/feature'><param name" + WORDS + " value" + WORDS +
    "/></feature><access origin='https://" + HOST + "'/>";
const std::string EXTENSIONS =
    extension("cookiejar", asset(LONG, "true")) + extension("auth", asset(LONG, "token")) +
    extension("network", asset("overrideProxy", LONG) + "<tavlo:errorPage src" + WORDS + "/>") +
    extension("gestures", "<tavlo:param name='tap' value='yes' properties" + WORDS + "/>") +
    extension("permissions", named("permission", LONG, "no") + named("permission", "b", "yes")) +
    extension("chrome", asset("configureSearchBar", LONG)) +
    extension("settings", named("setting", "defaultFontSize", "0, which is too small to be read")) +
    extension("messaging", named("app", LONG, "yes")) +
    extension("resources", asset("LocalStoragePath", LONG) + asset(LONG, LONG)) +
    "<tavlo:export resource" + WORDS + "/>";

/// A parser whose record is empty or a full one.
std::unique_ptr<Reader> parserWith(const std::string& children, const std::string& attributes) {
  auto reader = std::make_unique<Reader>();
  reader->read(children, attributes);
  reader->setError("before");
  return reader;
}

std::string all(Reader& reader) {
  return dumpOf(reader.record()) + reader.getErrorText();
}

TEST(Guarantees, HandlersOfTheW3CElementsAreStrongAndTheOthersBasic) {
  using P = NimbrelConfigParser;
  const auto root = rootOf(widget(W3C + EXTENSIONS));
  std::vector<Operation<Reader>> strong;
  auto node = root->getFirstElementChild();
  const auto next = [&](auto handler, std::vector<Operation<Reader>>& operations) {
    operations.push_back(
        {node->nameView().data(), 1, [handler, node](Reader& reader) { (reader.*handler)(node); }});
    node = node->getNextElementSibling();
  };
  for (const auto handler :
       {&P::processDescription, &P::processLicense, &P::processAuthor, &P::processIcon,
        &P::processPreference, &P::processFeature, &P::processAccess}) {
    next(handler, strong);
  }
  std::vector<Operation<Reader>> basic;
  for (const auto handler :
       {&P::processCookieJar, &P::processAuth, &P::processNetwork, &P::processGestures,
        &P::processPermissions, &P::processChrome, &P::processSettings, &P::processMessaging,
        &P::processLocalResources, &P::processExport}) {
    next(handler, basic);
  }
  ASSERT_EQ(node, nullptr);
  const auto empty = [] { return parserWith("", ""); };
  hold<Reader>(STRONG, empty, all, strong);
  hold<Reader>(BASIC, empty, all, basic);
}

TEST(Guarantees, NamesAndStartFilesAreNotReadAgain) {
  const auto node = rootOf(widget(NAME_AND_CONTENT))->getFirstElementChild();
  const auto content = node->getNextElementSibling();
  std::unique_ptr<Reader> reader;
  long blocks = 0;
  const auto prepare = [&] {
    blocks = liveBlocks();
    reader = parserWith("", "");
  };
  const auto verify = [&](bool threw) {
    const config::BasicConfig& record = reader->record();
    EXPECT_NE(threw, record.getShortName() && record.getStartFile());
    EXPECT_TRUE(record.getName() || !record.getShortName());
    reader.reset();
    EXPECT_EQ(liveBlocks(), blocks) << "blocks leaked";
  };
  EXPECT_GE(
      failEachAllocation(
          prepare, [&] { reader->processName(node), reader->processContent(content); }, verify),
      5);
}

TEST(Guarantees, TheOtherStepsOfAParser) {
  const std::string xml = widget(NAME_AND_CONTENT + W3C + EXTENSIONS, "id='urn:x' version" + WORDS);
  const auto document = util::XmlParserLibXml().parse(
      xml.data(), static_cast<unsigned int>(xml.size()), nullptr, nullptr);
  const std::vector<std::string> locales = {LONG, "en"};
  const Option<std::string> value = some(LONG);
  const auto full = [] { return parserWith(NAME_AND_CONTENT + W3C, ""); };
  hold<Reader>(STRONG, full, all,
               {{"setError", 1, [](auto& reader) { reader.setError(LONG); }},
                {"setError of bytes", 1, [](auto& reader) { reader.setError(LONG.c_str()); }},
                {"view modes", 1, [&](auto& reader) { reader.processViewMode(value); }},
                {"locales", 1, [&](auto& reader) { reader.processDefaultLocale(value); }},
                {"queues", 1, [](auto& reader) {
                   std::vector<std::shared_ptr<util::XmlNode>> nodes;
                   reader.processUserAgentLocales(nodes);
                 }}});
  const auto root = rootOf(widget(
      "", "version" + WORDS + " viewmodes" + WORDS + " defaultlocale" + WORDS + " id='urn:i'"));
  const auto bare = [&] {
    auto reader = parserWith("", "");
    reader->record().userAgentLocales() = locales;
    return reader;
  };
  hold<Reader>(BASIC, bare, all, {{"attributes", 5, [&](auto& reader) {
                                     reader.record().userAgentLocales() =
                                         locales;  // which it completes
                                     reader.processWidgetAttributes(root);
                                   }}});
  hold<Reader>(BASIC, full, all,
               {{"process", 9, [&](auto& reader) { reader.process(document, locales); }}});
}

TEST(Guarantees, RecordsAreAssignedWithTheBasicGuarantee) {
  const auto reader = parserWith(NAME_AND_CONTENT + W3C + EXTENSIONS, "version" + WORDS);
  const auto dump = [](config::BasicConfig& record) { return dumpOf(record); };
  const auto make = [] {
    return std::make_unique<config::BasicConfig>(parserWith("", "")->record());
  };
  hold<config::BasicConfig>(BASIC, make, dump,
                            {{"assign", 20, [&](auto& record) { record = reader->record(); }},
                             {"copy", 20, [&](auto& record) {
                                (void)config::BasicConfig(reader->record());
                                (void)record;
                              }}});
}

}  // namespace
}  // namespace orvane::nimbrel::test
