#include "config/BasicConfig.h"
#include "tests/support/Checks.h"
#include "tests/support/ConfigReader.h"

namespace orvane::nimbrel::config {
namespace {

using namespace test;
using namespace testing;

// The other defaults stand in docs/elements.md, which is tested.
TEST(BasicConfig, StartsWithItsDefaults) {
  const BasicConfig record;
  EXPECT_FALSE(record.getLicense() || record.getShortName() || record.getAppSettings().reserved);
  EXPECT_EQ(record.getFeatures().size() + record.getIcons().size() +
                record.getPreferences().size() + record.getWindowModes().size() +
                record.getUserAgentLocales().size() + record.getAccessRequestList().size() +
                record.getExports().size() + record.getLocalResources().otherSettings.size(),
            0U);
  EXPECT_EQ(record.getNetSettings().maxConnections, 24U);
}

TEST(BasicConfig, FindsKeptElementsByExactNameAndNamespace) {
  const auto record = read(
      "<tavlo:x id='1'/><x id='2'/><x xmlns='' id='3'/><tavlo:X id='4'/>"
      "<tavlo:x id='5' xml:lang='en'/><tavlo:x xml:lang='fr' id='6'/>");
  const auto idsIn = [&](const char* namespaceUri) {
    return [&record, namespaceUri](const std::string& name) {
      std::string ids;
      for (const Element* element : record->getElements(name.c_str(), namespaceUri)) {
        ids += show(element->getSingleAttributeValue("id"));
      }
      return ids;
    };
  };
  expectRows("x => 51  X => 4  tavlo:x =>", idsIn(EXTENSION_NAMESPACE));
  expectRows("x => 2", idsIn(W3C_WIDGETS_NAMESPACE));
  expectRows("x => 3  X =>", idsIn(nullptr));
  expectRows("x =>", idsIn(""));
  EXPECT_EQ(thrownBy<std::invalid_argument>([&] { (void)record->getElements(nullptr, "urn:n"); }),
            "name");
}

TEST(BasicConfig, CopiesShareAccessElementsAndNothingElse) {
  Reader reader;
  reader.read("<access origin='*'/><feature name='f:1'><param name='a' value='b'/></feature>");
  BasicConfig copy = reader.record();
  EXPECT_EQ(copy.getAccessRequestList()[0].element,
            reader.record().getAccessRequestList()[0].element);
  copy.features()[0].params[0].second = "c";
  EXPECT_EQ(reader.record().getFeatures()[0].params[0].second, "b");
}

TEST(Element, ReadsByTheRulesOfTheParser) {
  const auto record =
      read("<tavlo:x a='  1  2 ' tavlo:a=' t ' dir='rtl' xml:lang='en'> b  <i>c</i> </tavlo:x>");
  const Element& element = *record->getElements("x", EXTENSION_NAMESPACE).at(0);
  EXPECT_EQ(show(element.getName()) + show(element.getNamespace()),
            std::string("x") + EXTENSION_NAMESPACE);
  EXPECT_EQ(show(element.getSingleAttributeValue("a")), "1 2");
  EXPECT_EQ(show(element.getSingleAttributeValue("a", EXTENSION_NAMESPACE)), "t");
  EXPECT_EQ(show(element.getSingleDisplayableAttributeValue("a")), "en/rtl[en/rtl:1 2]");
  EXPECT_EQ(show(element.getSingleDisplayableAttributeValue("a", EXTENSION_NAMESPACE)),
            "en/rtl[en/rtl:t]");
  EXPECT_EQ(show(element.getTextContent()), "en/rtl[en/rtl: b  ][en/rtl:c][en/rtl: ]");
  EXPECT_EQ(show(element.getTextContent(true)), "en/rtl[en/rtl:b ][en/rtl:c]");
}

TEST(Element, SubclassesReadItsNodeByItsRules) {
  class Numbered : public Element {
   public:
    using Element::Element;
    [[nodiscard]] unsigned int number() const {
      return rules.parseNonNegativeInteger(rules.getTextContent(node, true).c_str());
    }
  };
  const Element element(rootOf("<e> 12 </e>"),
                        ConfigRules(std::make_shared<util::UnicodeUtilICU>()));
  EXPECT_EQ(
      Numbered(element.getNode(), ConfigRules(std::make_shared<util::UnicodeUtilICU>())).number(),
      12U);
}

TEST(Element, OneArgumentFormsCallTheOthers) {
  class Fixed : public Element {
   public:
    using Element::Element;
    [[nodiscard]] util::Option<std::string> getSingleAttributeValue(
        const char* name, const char* namespaceUri) const override {
      util::Option<std::string> value;
      value = std::string(name) + (namespaceUri == nullptr ? "!" : "?");
      return value;
    }
    [[nodiscard]] util::Option<util::LocalizableString> getSingleDisplayableAttributeValue(
        const char* /*name*/, const char* /*namespaceUri*/) const override {
      return {};
    }
  };
  const ConfigRules icuRules(std::make_shared<util::UnicodeUtilICU>());
  const Fixed element(rootOf("<e a='1'/>"), icuRules);
  EXPECT_EQ(show(element.Element::getSingleAttributeValue("a")), "a!");
  EXPECT_EQ(show(element.Element::getSingleDisplayableAttributeValue("a")), "-");
  EXPECT_EQ(thrownBy<std::invalid_argument>([&] { Element(nullptr, icuRules); }),
            "node cannot be NULL");
}

}  // namespace
}  // namespace orvane::nimbrel::config
