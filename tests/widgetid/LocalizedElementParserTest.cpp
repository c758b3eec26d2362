#include <map>

#include "tests/support/Checks.h"
#include "util/ParseException.h"
#include "widgetid/LocalizedElementParser.h"

namespace orvane::zel::config {
namespace {

using nimbrel::test::thrownBy;

using Texts = std::map<std::string, std::string>;

Texts names(const std::string& document, bool normalize = true) {
  const std::vector<char> exact(document.begin(), document.end());  // shows reading too far
  return LocalizedElementParser::getLocalizedElementMap(
      exact.data(), static_cast<unsigned int>(exact.size()), "name", normalize);
}

std::string widget(const std::string& content) {
  return "<widget xmlns='http://www.w3.org/ns/widgets'>" + content + "</widget>";
}

TEST(LocalizedElementParser, CollectsTheFirstTextOfEachLanguage) {
  const std::pair<const char*, Texts> cases[] = {
      {"", {}},
      {"<name>a</name><name>b</name>", {{"*", "a"}}},
      {"<name xml:lang=''>a</name><name>b</name>", {{"*", "a"}}},
      {"<name xml:lang='en'>a</name><name xml:lang='EN'>b</name><name xml:lang='en'>c</name>",
       {{"EN", "b"}, {"en", "a"}}},
      {"<name xml:lang='en'/><name xml:lang='en'>b</name>", {{"en", ""}}},
      {"<name xml:lang='*'>a</name><name>b</name>", {{"*", "a"}}},
      {"<name>a<span xml:lang='de'> b<!-- c --></span><![CDATA[<d>]]></name>", {{"*", "a b<d>"}}},
      {"<name short='s'>a</name><description>d</description><Name>n</Name>", {{"*", "a"}}},
      {"<x><name>a</name></x><name xmlns=''>b</name><n:name xmlns:n='u'>c</n:name>", {}},
      {"text<name xml:lang='de'>\xC3\xBC</name><?pi?>", {{"de", "\xC3\xBC"}}},
  };
  for (const auto& [content, texts] : cases) {
    EXPECT_EQ(names(widget(content)), texts) << content;
  }
}

TEST(LocalizedElementParser, NormalizesOnlyWhenAsked) {
  const std::string document = widget("<name> a \n\t b<i> c</i> </name>");
  EXPECT_EQ(names(document, true), (Texts{{"*", "a b c"}}));
  EXPECT_EQ(names(document, false), (Texts{{"*", " a \n\t b c "}}));
}

TEST(LocalizedElementParser, SearchesBelowAnyRootAndIgnoresItsLanguage) {
  EXPECT_EQ(names("<root xml:lang='fr' xmlns:w='http://www.w3.org/ns/widgets'>"
                  "<w:name>a</w:name><name>b</name></root>"),
            (Texts{{"*", "a"}}));
  EXPECT_EQ(names("<name xmlns='http://www.w3.org/ns/widgets'>root</name>"), Texts());
}

TEST(LocalizedElementParser, RejectsWhatIsNoDocument) {
  for (const char* document : {"", " ", "<widget>", "<widget></name>", "no document", "<a/><b/>"}) {
    SCOPED_TRACE(document);
    EXPECT_THROW(names(document), nimbrel::ParseException);
  }
  EXPECT_THROW((void)LocalizedElementParser::getLocalizedElementMap(nullptr, 10, "name", true),
               nimbrel::ParseException);
  EXPECT_EQ(thrownBy<std::invalid_argument>([] {
              (void)LocalizedElementParser::getLocalizedElementMap("<", 1, nullptr, true);
            }),
            "elementName cannot be NULL");
  EXPECT_EQ(nimbrel::test::rejectionBy<nimbrel::ParseException>(
                [] { (void)names("<widget>\n <name></widget>"); }),
            "2:17: Opening and ending tag mismatch: name line 2 and widget");
}

}  // namespace
}  // namespace orvane::zel::config
