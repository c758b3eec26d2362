#include "config/BasicConfig.h"
#include "tests/support/Checks.h"
#include "tests/support/ConfigReader.h"

namespace orvane::nimbrel::config {
namespace {

using namespace test;
using namespace testing;

TEST(BasicConfig, StartsWithItsDefaults) {
  const BasicConfig record;
  EXPECT_FALSE(record.getAuthor() || record.getStartFile() || record.getDescription() ||
               record.getHeight() || record.getWidth() || record.getId() || record.getLicense() ||
               record.getName() || record.getShortName() || record.getVersion() ||
               record.getTavloApplicationId() || record.getTavloApplicationVersion());
  EXPECT_EQ(record.getFeatures().size() + record.getIcons().size() +
                record.getPreferences().size() + record.getWindowModes().size() +
                record.getUserAgentLocales().size() + record.getAccessRequestList().size() +
                record.getAppPermissions().size() + record.getMessagingPermissions().size() +
                record.getExports().size(),
            0U);
  EXPECT_EQ(record.getOrvnAuthMode(), 0);
  EXPECT_EQ(record.getChromeSettings(), "system");

  // The members of the settings records in the order in which they are declared.
  const auto& [persistent, own, device, auth, token, regional] = record.getCookieJarSettings();
  EXPECT_FALSE(persistent || own || device || auth || token || regional);

  const auto& [agents, headers, page, proxy, idle, perHost, connections, perProxy, keepAlive, dns,
               caching, wrs, tls] = record.getNetSettings();
  EXPECT_TRUE(agents.empty() && headers.empty() && page.empty() && proxy.empty());
  EXPECT_THAT((std::vector{idle, perHost, connections, perProxy, keepAlive}),
              ElementsAre(25, 8, 24, 24, 8));
  EXPECT_FALSE(dns || caching || wrs || tls);

  const auto& [flick, swipe, drag, pinchzoom, tap, multiTap, hold] = record.getGestureSettings();
  for (const Config::Gesture& gesture : {flick, swipe, drag, pinchzoom, tap, multiTap, hold}) {
    EXPECT_FALSE(gesture.enabled || !gesture.properties.empty());
  }

  const auto& [internet, reserved, fontSize, minimum, dpi, flatten, zoom, context, debug, w3c,
               disable, inspector, reader, pello] = record.getAppSettings();
  EXPECT_FALSE(internet || reserved || dpi || flatten || debug || w3c || disable || inspector ||
               reader || pello || !context);
  EXPECT_EQ(std::make_tuple(fontSize, minimum, zoom), std::make_tuple(0, -1, 0.0F));

  const auto& [other, quota, path, database, databaseQuota, databasePath, cachePath, cacheQuota,
               delay, crossDomain] = record.getLocalResources();
  EXPECT_TRUE(other.empty() && path.empty() && databasePath.empty() && cachePath.empty());
  EXPECT_EQ(quota + databaseQuota + cacheQuota, 0U);
  EXPECT_EQ(delay, 0.0);
  EXPECT_FALSE(database || crossDomain);
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
  const ConfigRules rules(std::make_shared<util::UnicodeUtilICU>());
  const Fixed element(rootOf("<e a='1'/>"), rules);
  EXPECT_EQ(show(element.Element::getSingleAttributeValue("a")), "a!");
  EXPECT_EQ(show(element.Element::getSingleDisplayableAttributeValue("a")), "-");
  EXPECT_EQ(thrownBy<std::invalid_argument>([&] { Element(nullptr, rules); }),
            "node cannot be NULL");
}

}  // namespace
}  // namespace orvane::nimbrel::config
