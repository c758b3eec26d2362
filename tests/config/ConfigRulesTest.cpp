#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "config/ConfigRules.h"
#include "tests/support/ConfigReader.h"

namespace orvane::nimbrel::config {
namespace {

using test::rootOf;
using test::show;
using test::thrownBy;
using testing::ElementsAre;

using Node = std::shared_ptr<util::XmlNode>;
using Bad = std::invalid_argument;

const ConfigRules& rules() {
  static const ConfigRules RULES(std::make_shared<util::UnicodeUtilICU>());
  return RULES;
}

TEST(ConfigRules, NameWhatIsNull) {
  EXPECT_EQ(thrownBy<Bad>([] { ConfigRules(nullptr); }), "unicodeUtil cannot be NULL");
  EXPECT_EQ(thrownBy<Bad>([] { (void)rules().parseBoolean(nullptr); }), "input is null");
  EXPECT_EQ(thrownBy<Bad>([] { (void)rules().parseNonNegativeInteger(nullptr); }), "input is null");
  EXPECT_EQ(thrownBy<Bad>([] { (void)rules().getTextContent(Node(), true); }),
            "node cannot be NULL");
  EXPECT_FALSE(rules().isValidTavloApplicationId(nullptr));
}

TEST(ConfigRules, AttributeValuesAreSqueezedAndTrimmed) {
  const struct {
    const char* attributes;
    const char* namespaceUri;
    const char* value;
  } cases[] = {
      {"", nullptr, "-"},
      {"a=' &#9;&#10;&#13; '", nullptr, ""},
      {"a='  x \t y&#10;&#10;z '", nullptr, "x y z"},
      {"a='&#xA0;x&#x2003;&#x2003;y'", nullptr, "\xC2\xA0x\xE2\x80\x83\xE2\x80\x83y"},
      {"A='x' p:a='x'", nullptr, "-"},
      {"a='plain'", "urn:p", "-"},
      {"a='plain' p:a=' spaced '", "urn:p", "spaced"},
      {"p:a='spaced' a='plain'", nullptr, "plain"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.attributes);
    const Node node = rootOf(std::string("<e xmlns:p='urn:p' ") + c.attributes + "/>");
    EXPECT_EQ(show(rules().getSingleAttributeValue(node, c.namespaceUri, "a")), c.value);
  }
}

TEST(ConfigRules, DisplayableAttributesCarryTheLanguageAndDirectionInScope) {
  const struct {
    const char* attributes;
    const char* value;
  } cases[] = {
      {"", "-"},
      {"a=' '", "he/rlo"},
      {"a=' x  y '", "he/rlo[he/rlo:x y]"},
      {"a='x' xml:lang='en' dir='rtl'", "en/rtl[en/rtl:x]"},
      {"a='x' xml:lang='' dir='auto'", "/rlo[/rlo:x]"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.attributes);
    const Node root =
        rootOf(std::string("<r xml:lang='he' dir='rlo'><e ") + c.attributes + "/></r>");
    EXPECT_EQ(show(rules().getSingleDisplayableAttributeValue(root->getFirstElementChild(), nullptr,
                                                              "a")),
              c.value);
  }
}

TEST(ConfigRules, TheNearestValidDirectionCounts) {
  using Text = util::LocalizableString;
  const struct {
    const char* outer;
    const char* inner;
    Text::Direction direction;
  } cases[] = {
      {"", "", Text::LTR},
      {"", "dir='RTL'", Text::LTR},
      {"", "dir='rtl'", Text::RTL},
      {"", "dir='lro'", Text::LRO},
      {"", "dir='rlo'", Text::RLO},
      {"dir='rtl'", "dir='ltr'", Text::LTR},
      {"dir='rtl'", "", Text::RTL},
      {"dir='rtl'", "dir=' ltr'", Text::RTL},
      {"dir='rtl'", "dir=''", Text::RTL},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.outer) + " | " + c.inner);
    const Node outer = rootOf(std::string("<a ") + c.outer + "><b><c " + c.inner + "/></b></a>");
    EXPECT_EQ(
        rules().determineDirectionality(outer->getFirstElementChild()->getFirstElementChild()),
        c.direction);
  }
}

TEST(ConfigRules, TextContentKeepsTheLanguageAndDirectionOfEachPart) {
  const struct {
    const char* content;
    bool normalize;
    const char* text;
  } cases[] = {
      {"", true, "/ltr"},  // an element without children takes nothing from what is in scope
      {"<!-- -->", true, "en/rtl"},
      {" ", true, "en/rtl"},
      {" a \n\t b ", true, "en/rtl[en/rtl:a b]"},
      {" a \n\t b ", false, "en/rtl[en/rtl: a \n\t b ]"},
      {"a <b xml:lang='he' dir='ltr'> c <i dir='x'>d</i></b> e", true,
       "en/rtl[en/rtl:a ][he/ltr:c ][he/ltr:d][en/rtl: e]"},
      {"a<b xml:lang=''>b</b>", false, "en/rtl[en/rtl:a][/rtl:b]"},
      {"a<!-- x --><?p x?><![CDATA[<b>]]>&amp;", false, "en/rtl[en/rtl:a][en/rtl:<b>&]"},
      {"&#xA0;a&#x2003;&#x3000;b&#x85;", true, "en/rtl[en/rtl:a b]"},
      {" <b> </b> a ", true, "en/rtl[en/rtl:a]"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.content);
    const Node node = rootOf(std::string("<e xml:lang='en' dir='rtl'>") + c.content + "</e>");
    EXPECT_EQ(show(rules().getTextContent(node, c.normalize)), c.text);
  }
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
  EXPECT_FALSE(has("<e/>", nullptr, "E"));
  EXPECT_FALSE(has("<ee/>", nullptr, "e"));
  EXPECT_FALSE(has("<e xmlns='urn:N'/>", "urn:n", "e"));
  EXPECT_FALSE(has("<e xmlns='urn:n/'/>", "urn:n", "e"));
  EXPECT_FALSE(has("<e xmlns='urn:n'/>", nullptr, "e"));
}

TEST(ConfigRules, OnlyANodesOwnLanguageIsExplicit) {
  const struct {
    const char* attributes;
    bool any, en, empty;
  } cases[] = {
      {"", false, false, false},
      {"lang='en'", false, false, false},
      {"xml:lang=''", false, false, true},
      {"xml:lang='en'", true, true, false},
      {"xml:lang='EN'", true, false, false},
      {"xml:lang='en-us'", true, false, false},
      {"xml:lang=' en'", true, false, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.attributes);
    const Node root = rootOf(std::string("<r xml:lang='en'><e ") + c.attributes + "/></r>");
    const Node node = root->getFirstElementChild();
    EXPECT_EQ(rules().xmlNodeHasExplicitLang(node), c.any);
    EXPECT_EQ(rules().xmlNodeHasExplicitLang(node, "en"), c.en);
    EXPECT_EQ(rules().xmlNodeHasExplicitLang(node, ""), c.empty);
  }
}

TEST(ConfigRules, BooleansAreTrueAndFalseInSoManyWords) {
  EXPECT_TRUE(rules().parseBoolean("true"));
  EXPECT_FALSE(rules().parseBoolean("false"));
  for (const char* input : {"", "TRUE", " true", "true ", "1", "0", "yes", "tru", "truee"}) {
    EXPECT_EQ(thrownBy<Bad>([&] { (void)rules().parseBoolean(input); }),
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
    EXPECT_EQ(thrownBy<Bad>([&] { (void)parse(input); }), "input") << input;
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
