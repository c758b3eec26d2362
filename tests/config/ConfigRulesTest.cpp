#include <gmock/gmock.h>

#include "config/ConfigRules.h"
#include "tests/support/Checks.h"
#include "tests/support/ConfigReader.h"

namespace orvane::nimbrel::config {
namespace {

using namespace test;
using namespace testing;

using Node = std::shared_ptr<util::XmlNode>;
using BadArgument = std::invalid_argument;

const ConfigRules& rules() {
  static const ConfigRules RULES(std::make_shared<util::UnicodeUtilICU>());
  return RULES;
}

TEST(ConfigRules, NameWhatIsNull) {
  EXPECT_EQ(thrownBy<BadArgument>([] { ConfigRules(nullptr); }), "unicodeUtil cannot be NULL");
  EXPECT_EQ(thrownBy<BadArgument>([] { (void)rules().parseBoolean(nullptr); }), "input is null");
  EXPECT_EQ(thrownBy<BadArgument>([] { (void)rules().parseNonNegativeInteger(nullptr); }),
            "input is null");
  EXPECT_EQ(thrownBy<BadArgument>([] { (void)rules().getTextContent(Node(), true); }),
            "node cannot be NULL");
  EXPECT_FALSE(rules().isValidTavloApplicationId(nullptr));
}

TEST(ConfigRules, AttributeValuesAreSqueezedAndTrimmed) {
  const auto value = [](const char* namespaceUri) {
    return [namespaceUri](const std::string& attributes) {
      const Node node = rootOf("<e xmlns:p='urn:p' " + attributes + "/>");
      return show(rules().getSingleAttributeValue(node, namespaceUri, "a"));
    };
  };
  const Row inNone[] = {{"", "-"},
                        {"a=' &#9;&#10;&#13; '", ""},
                        {"a='  x \t y&#10;&#10;z '", "x y z"},
                        {"a='&#xA0;x&#x2003;&#x2003;y'", "\xC2\xA0x\xE2\x80\x83\xE2\x80\x83y"},
                        {"A='x' p:a='x'", "-"},
                        {"p:a='spaced' a='plain'", "plain"}};
  expectRows(inNone, value(nullptr));
  expectRows("a='plain' => -  a='plain' p:a=' spaced ' => spaced", value("urn:p"));
}

TEST(ConfigRules, DisplayableAttributesCarryTheLanguageAndDirectionInScope) {
  const Row cases[] = {{"", "-"},
                       {"a=' '", "he/rlo"},
                       {"a=' x  y '", "he/rlo[he/rlo:x y]"},
                       {"a='x' xml:lang='en' dir='rtl'", "en/rtl[en/rtl:x]"},
                       {"a='x' xml:lang='' dir='auto'", "/rlo[/rlo:x]"}};
  expectRows(cases, [](const std::string& attributes) {
    const Node root = rootOf("<r xml:lang='he' dir='rlo'><e " + attributes + "/></r>");
    return show(
        rules().getSingleDisplayableAttributeValue(root->getFirstElementChild(), nullptr, "a"));
  });
}

TEST(ConfigRules, TheNearestValidDirectionCounts) {
  const auto inner = [](const std::string& attributes) {  // "of an ancestor | of the element"
    const std::size_t bar = attributes.find('|');
    const Node outer = rootOf("<a " + attributes.substr(0, bar) + "><b><c " +
                              attributes.substr(bar + 1) + "/></b></a>");
    static constexpr const char* NAMES[] = {"ltr", "rtl", "lro", "rlo"};
    return std::string(NAMES[rules().determineDirectionality(
        outer->getFirstElementChild()->getFirstElementChild())]);
  };
  expectRows(R"(| => ltr  | dir='RTL' => ltr  | dir='rtl' => rtl  | dir='lro' => lro
                | dir='rlo' => rlo  dir='rtl' | dir='ltr' => ltr  dir='rtl' | => rtl
                dir='rtl' | dir=' ltr' => rtl  dir='rtl' | dir='' => rtl)",
             inner);
}

TEST(ConfigRules, TextContentKeepsTheLanguageAndDirectionOfEachPart) {
  const auto text = [](bool normalize) {
    return [normalize](const std::string& content) {
      const Node node = rootOf("<e xml:lang='en' dir='rtl'>" + content + "</e>");
      return show(rules().getTextContent(node, normalize));
    };
  };
  const Row normalized[] = {
      {"", "/ltr"},  // an element without children takes nothing from what is in scope
      {"<!-- -->", "en/rtl"},
      {" ", "en/rtl"},
      {" a \n\t b ", "en/rtl[en/rtl:a b]"},
      {"a <b xml:lang='he' dir='ltr'> c <i dir='x'>d</i></b> e",
       "en/rtl[en/rtl:a ][he/ltr:c ][he/ltr:d][en/rtl: e]"},
      {"&#xA0;a&#x2003;&#x3000;b&#x85;", "en/rtl[en/rtl:a b]"},
      {" <b> </b> a ", "en/rtl[en/rtl:a]"},
  };
  expectRows(normalized, text(true));
  const Row kept[] = {
      {" a \n\t b ", "en/rtl[en/rtl: a \n\t b ]"},
      {"a<b xml:lang=''>b</b>", "en/rtl[en/rtl:a][/rtl:b]"},
      {"a<!-- x --><?p x?><![CDATA[<b>]]>&amp;", "en/rtl[en/rtl:a][en/rtl:<b>&]"},
  };
  expectRows(kept, text(false));
}

TEST(ConfigRules, NamesAndNamespacesMatchByteForByte) {
  const auto has = [](const char* xml, const char* namespaceUri, const char* name) {
    return rules().xmlNodeHasName(rootOf(xml), namespaceUri, name);
  };
  EXPECT_TRUE(has("<e/>", nullptr, "e"));
  EXPECT_TRUE(has("<e xmlns=''/>", nullptr, "e"));
  EXPECT_TRUE(has("<p:e xmlns:p='urn:n'/>", "urn:n", "e"));
  EXPECT_FALSE(has("<p:e xmlns:p='urn:n'/>", "urn:n", "p:e"));
  EXPECT_FALSE(has("<e/>", "urn:n", "e"));
  EXPECT_FALSE(has("<e/>", "", "e"));
  EXPECT_FALSE(has("<e/>", nullptr, "E"));
  EXPECT_FALSE(has("<ee/>", nullptr, "e"));
  EXPECT_FALSE(has("<e xmlns='urn:N'/>", "urn:n", "e"));
  EXPECT_FALSE(has("<e xmlns='urn:n/'/>", "urn:n", "e"));
  EXPECT_FALSE(has("<e xmlns='urn:n'/>", nullptr, "e"));
}

TEST(ConfigRules, OnlyANodesOwnLanguageIsExplicit) {
  expectRows(R"(=>  lang='en' =>  xml:lang='' => empty  xml:lang='en' => any en
                xml:lang='EN' => any  xml:lang='en-us' => any  xml:lang=' en' => any)",
             [](const std::string& attributes) {
               const Node root = rootOf("<r xml:lang='en'><e " + attributes + "/></r>");
               const Node node = root->getFirstElementChild();
               return std::string(rules().xmlNodeHasExplicitLang(node) ? "any" : "") +
                      (rules().xmlNodeHasExplicitLang(node, "en") ? " en" : "") +
                      (rules().xmlNodeHasExplicitLang(node, "") ? "empty" : "");
             });
}

TEST(ConfigRules, BooleansAreTrueAndFalseInSoManyWords) {
  EXPECT_TRUE(rules().parseBoolean("true"));
  EXPECT_FALSE(rules().parseBoolean("false"));
  for (const char* input : {"", "TRUE", " true", "true ", "1", "0", "yes", "tru", "truee"}) {
    EXPECT_EQ(thrownBy<BadArgument>([&] { (void)rules().parseBoolean(input); }),
              "input is not a valid boolean")
        << input;
  }
}

TEST(ConfigRules, IntegersAreReadLenientlyUpToTheirEndOrLimit) {
  const auto parse = [](const char* input) { return rules().parseNonNegativeInteger(input); };
  const std::pair<unsigned int, std::vector<const char*>> cases[] = {
      {0, {"0", "abc", " x", "-5", "+5", "0x10"}},
      {12, {"12", " 12", "0012", "1 2", "\t1\n\v\f\r2", "12px", "12 px", "12- ", "12\xC2\xA0"}},
      {4294967295U, {"4294967295", "429496729 5x", "00004294967295"}},
  };
  for (const auto& [value, inputs] : cases) {
    for (const char* input : inputs) {
      EXPECT_EQ(parse(input), value) << input;
    }
  }
  for (const char* input : {"", " ", "\n\t", "42 ", "42\n", "1 2 "}) {
    EXPECT_EQ(thrownBy<BadArgument>([&] { (void)parse(input); }), "input") << input;
  }
  for (const char* input : {"4294967296", "42949672950", "4294967296px", "4294967 296 "}) {
    EXPECT_EQ(thrownBy<std::overflow_error>([&] { (void)parse(input); }), "input") << input;
  }
}

TEST(ConfigRules, KeywordsKeepTheirOrderAndRepetitions) {
  EXPECT_THAT(rules().parseListOfKeywords(" \t\n"), ElementsAre());
  EXPECT_THAT(rules().parseListOfKeywords("\tb  a\nb c "), ElementsAre("b", "a", "b", "c"));
}

TEST(ConfigRules, ApplicationIdsAre1To32LowerCaseLettersAndDigits) {
  const char* const longest = "abcdefghijklmnopqrstuvwxyz012345";
  for (const char* id : {"a", "0", "6789", longest}) {
    EXPECT_TRUE(rules().isValidTavloApplicationId(id)) << id;
  }
  for (const char* id : {"", "A", "a-b", "a.b", "a b", "a_b", "`", "{", "/", ":", "\xC3\xA4",
                         "abcdefghijklmnopqrstuvwxyz0123456"}) {
    EXPECT_FALSE(rules().isValidTavloApplicationId(id)) << id;
  }
}

}  // namespace
}  // namespace orvane::nimbrel::config
