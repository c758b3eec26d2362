#include <gmock/gmock.h>

#include "tests/support/Checks.h"
#include "tests/support/CollidingNames.h"
#include "tests/support/ConfigReader.h"

namespace orvane::nimbrel::config {
namespace {

using namespace test;
using namespace testing;

TEST(WidgetAttributes, IdsAreIris) {
  for (const char* id : {"urn:x", "http://example.org/a", "http://\xC3\xBC.example/"}) {
    EXPECT_EQ(show(read("", std::string("id='  ") + id + " '")->getId()), id);
  }
  for (const char* id : {"", "no scheme", "relative/path", "http://a b/", "http://a/&lt;"}) {
    EXPECT_EQ(show(read("", std::string("id='") + id + "'")->getId()), "-") << id;
  }
  EXPECT_EQ(show(read("", "tavlo:id='urn:x'")->getId()), "-");
}

TEST(WidgetAttributes, VersionsCarryLanguageAndDirection) {
  EXPECT_EQ(show(read("", "version=''")->getVersion()), "-");
  EXPECT_EQ(show(read("", "version=' \t&#10;'")->getVersion()), "-");
  EXPECT_EQ(show(read("", "version='  1.0   beta '")->getVersion()), "/ltr[/ltr:1.0 beta]");
  EXPECT_EQ(show(read("", "version='1' xml:lang='he' dir='rtl'")->getVersion()),
            "he/rtl[he/rtl:1]");
}

TEST(WidgetAttributes, SizesAreAboveZeroAndApplicationVersionsNeedNotBe) {
  const std::pair<std::string, std::vector<const char*>> cases[] = {
      {"480", {"480", "  480  ", "0480", "480px", "480%", "4 80", "480.9"}},
      {"4294967295", {"4294967295"}},
      {"0", {"0", "000", "-1", "+1", "abc", "x100"}},
      {"-", {"", "   ", "4294967296", "99999999999999999999999"}},
  };
  for (const auto& [version, values] : cases) {
    const std::string size = version == "0" ? "-" : version;
    for (const char* written : values) {
      SCOPED_TRACE(written);
      const std::string value = std::string("='") + written + "' ";
      const auto high = read("<icon src='i' height" + value + "/>",
                             "height" + value + "tavlo:applicationVersion" + value);
      EXPECT_EQ(show(high->getTavloApplicationVersion()), version);
      EXPECT_EQ(show(high->getHeight()) + show(high->getWidth()), size + "-");
      EXPECT_EQ(show(high->getIcons().at(0).height) + show(high->getIcons()[0].width), size + "-");
      const auto wide = read("<icon src='i' width" + value + "/>", "width" + value);
      EXPECT_EQ(show(wide->getHeight()) + show(wide->getWidth()), "-" + size);
      EXPECT_EQ(show(wide->getIcons().at(0).height) + show(wide->getIcons()[0].width), "-" + size);
    }
  }
  EXPECT_EQ(show(read("", "applicationVersion='1'")->getTavloApplicationVersion()), "-");
}

TEST(WidgetAttributes, ApplicationIdsAreThoseOfTheStore) {
  EXPECT_EQ(show(read("", "tavlo:applicationId=' ab0 '")->getTavloApplicationId()), "ab0");
  for (const char* bad : {"tavlo:applicationId='Ab'", "tavlo:applicationId='a b'",
                          "tavlo:applicationId=''", "applicationId='ab0'"}) {
    EXPECT_EQ(show(read("", bad)->getTavloApplicationId()), "-") << bad;
  }
}

TEST(WidgetAttributes, ViewModesKeepTheFirstOfEach) {
  EXPECT_THAT(read("", "viewmodes=''")->getWindowModes(), IsEmpty());
  EXPECT_THAT(read("", "viewmodes='  a   b &#9;a A no-mode b,c b '")->getWindowModes(),
              ElementsAre("a", "b", "A", "no-mode", "b,c"));
}

TEST(Name, TheFirstInLocaleOrderWinsWithItsShortName) {
  const Row cases[] = {
      {"", "- -"},
      {"<name short=''/><name short='b'>B</name>", "/ltr he/ltr"},
      {"<name>A</name><name short='b'>B</name>", "he/ltr[he/ltr:A] -"},
      {"<name short='b'>B</name><name xml:lang='en'>A</name>", "en/ltr[en/ltr:A] -"},
      {"<name>A</name><name xml:lang='fr'>F</name>", "he/ltr[he/ltr:A] -"},
      {"<name xml:lang='fr' short='f'>F</name>", "- -"},
      {"<name xml:lang='en' short=' s  t '>\n  The  <b>Game</b>\n</name>",
       "en/ltr[en/ltr:The ][en/ltr:Game] en/ltr[en/ltr:s t]"},
      {"<name dir='rtl' short='s'>P<span dir='ltr'>A</span>S</name>",
       "he/rtl[he/rtl:P][he/ltr:A][he/rtl:S] he/rtl[he/rtl:s]"},
      {"<name xml:lang=''><span xml:lang='ar' dir='lro'>\xD7\xA9</span></name>",
       "/ltr[ar/lro:\xD7\xA9] -"},
  };
  expectRows(cases, [](const std::string& children) {
    const auto record = read(children, "xml:lang='he'");
    return show(record->getName()) + " " + show(record->getShortName());
  });
  EXPECT_EQ(show(read("<name>A</name>", "dir='rlo'")->getName()), "/rlo[/rlo:A]");
}

TEST(Description, KeepsWhiteSpaceAndTheFirstEvenIfEmpty) {
  const auto description = [](const char* children) {
    return show(read(children)->getDescription());
  };
  EXPECT_EQ(description("<name/>"), "-");
  EXPECT_EQ(description("<description>  a \n b </description>"), "/ltr[/ltr:  a \n b ]");
  EXPECT_EQ(description("<description/><description>b</description>"), "/ltr");
  EXPECT_EQ(description("<description>b</description><description xml:lang='en'>e</description>"),
            "en/ltr[en/ltr:e]");
}

TEST(License, KeepsItsTextAndAValidHref) {
  const Row cases[] = {
      {"<license> a  b </license>", "/ltr[/ltr: a  b ] - -"},
      {"<license href=' http://l.example/x '/>", "/ltr http://l.example/x -"},
      {"<license href='terms.txt'>a</license><license href='urn:l'>b</license>",
       "/ltr[/ltr:a] - -"},
      {"<license href='' file='f' xml:lang='en' dir='rtl'>a</license>", "en/rtl[en/rtl:a] - -"},
  };
  expectRows(cases, [](const std::string& children) {
    const auto license = read(children)->getLicense().get();
    return show(license.text) + " " + show(license.href) + " " + show(license.file);
  });
  EXPECT_FALSE(read("<name/>")->getLicense());
}

TEST(Author, KeepsAnyEmailAndAValidHref) {
  const Row cases[] = {
      {"<author/><author>B</author>", "/ltr - -"},
      {"<author email=' not  an email '/>", "/ltr - not an email"},
      {"<author email='' href='a b'> A\n B </author>", "/ltr[/ltr:A B] - "},
      {"<author href='urn:a' dir='rtl' xml:lang='en'>A</author>", "en/rtl[en/rtl:A] urn:a -"},
  };
  expectRows(cases, [](const std::string& children) {
    const auto author = read(children)->getAuthor().get();
    return show(author.name) + " " + show(author.href) + " " + show(author.email);
  });
  EXPECT_FALSE(read("<name/>")->getAuthor());
}

TEST(Content, OnlyTheFirstElementCounts) {
  const Row cases[] = {
      {"<name/>", "-"},
      {"<content src=''/><content src='b'/>", "-"},
      {"<content/><content src='b'/>", "-"},
      {"<content src=' a  b.html '/>", "a b.html||"},
      {"<content src='a' encoding='' type=''/><content src='b' type='t'/>", "a||"},
      {"<content src='a' encoding=' x-y ' type='text/html; x=y'/>", "a|x-y|text/html; x=y"},
      {"<content src='a'/><content src='e' xml:lang='en'/>", "e||"},
      {"<content src='f' xml:lang='fr'/>", "-"},
      {"<content xml:lang='en'/><content src='a'/>", "-"},
  };
  expectRows(cases, [](const std::string& children) {
    const auto file = read(children)->getStartFile();
    return file ? file.get().src + "|" + file.get().encoding + "|" + file.get().type : "-";
  });
}

TEST(Icon, TheFirstOfAPathWinsWithItsSizes) {
  const auto record = read(
      "<icon src='a.png'/><icon/><icon src=' '/><icon src='b.png' width='1' height='2'/>"
      "<icon src='b.png' width='3'/><icon src='B.png' width='0'/>"
      "<icon src=' c  d.png ' xml:lang='en' height='x'/><icon src='f' xml:lang='fr'/>");
  std::vector<std::string> shown;
  for (const Config::Icon& icon : record->getIcons()) {
    shown.push_back(icon.src + " " + show(icon.width) + "x" + show(icon.height));
  }
  EXPECT_THAT(shown, ElementsAre("c d.png -x-", "a.png -x-", "b.png 1x2", "B.png -x-"));
}

TEST(Preference, TheFirstOfANameWins) {
  const auto record = read(
      "<preference name='a'/><preference name='a' value='late'/><preference name='A' value=''/>"
      "<preference/><preference name='  ' value='x'/><preference name=' b  c ' value=' d  e '/>"
      "<preference name='t' readonly=' true '/><preference name='f' readonly='false'/>"
      "<preference name='x' readonly='TRUE'/><preference name='y' readonly=''/>"
      "<preference name='z' readonly='1'/><preference name='A' xml:lang='en' value='en'/>");
  std::vector<std::string> shown;
  for (const Config::Preference& preference : record->getPreferences()) {
    shown.push_back(preference.name + "=" + show(preference.value) +
                    (preference.readonly ? " readonly" : ""));
  }
  EXPECT_THAT(shown,
              ElementsAre("A=en", "a=-", "b c=d e", "t=- readonly", "f=-", "x=-", "y=-", "z=-"));
}

// Long lists are searched another way, of a second document as of the first, and a third way when
// the hashes of their keys collide.
TEST(Preference, LongListsAreAsDistinctAsShortOnes) {
  std::vector<std::string> keys = collidingNames(300);
#ifdef __GLIBCXX__
  ASSERT_EQ(std::hash<std::string>()(keys[0]), std::hash<std::string>()(keys[299]));
#endif
  for (int number = 0; number < 300; ++number) {
    keys.insert(keys.begin() + 2 * number, "k" + std::to_string(number));
  }
  std::string children;
  std::string modes;
  for (const std::string& key : keys) {
    for (const std::string& twice : {key, keys[7]}) {
      children += "<icon src='" + twice + "'/><preference name='" + twice + "'/>";
      modes += twice + " ";
    }
  }
  Reader reader;
  const auto first = reader.read(children, "viewmodes='" + modes + "'");
  for (const auto& record :
       {first, reader.read(children + children, "viewmodes='" + modes + "'")}) {
    EXPECT_EQ(record->getPreferences().size(), 600U);
    ASSERT_EQ(record->getIcons().size(), 600U);
    EXPECT_EQ(record->getIcons()[599].src, keys[599]);
    ASSERT_EQ(record->getWindowModes().size(), 600U);
    EXPECT_EQ(record->getWindowModes()[598], keys[598]);
  }
}

TEST(Feature, KeepsEachWithTheParametersThatAreComplete) {
  const auto record = read(
      "<feature name=' feature:a9bb79c1 '/><feature name='feature:a9bb79c1' required='false'/>"
      "<feature/><feature name='no iri' required='false'><param name='a' value='b'/></feature>"
      "<feature name='urn:f' required='maybe'>"
      "<param name='a' value=' 1  2 '/><param name='a' value=''/><param name='' value='x'/>"
      "<param value='x'/><param name='y'/><tavlo:param name='z' value='z'/><span><param name='n' "
      "value='n'/></span><other/>text<param name='b' value='c' xml:lang='fr'/></feature>");
  std::vector<std::string> shown;
  for (const Config::Feature& feature : record->getFeatures()) {
    shown.push_back(feature.name + (feature.required ? " required" : ""));
    for (const auto& [name, value] : feature.params) {
      shown.back() += " " + name + "=" + value;
    }
  }
  EXPECT_THAT(shown, ElementsAre("feature:a9bb79c1 required", "feature:a9bb79c1",
                                 "urn:f required a=1 2 a= b=c"));
}

TEST(Feature, ARequiredOneWithABadNameFailsTheParse) {
  for (const char* attributes : {"name='no iri'", "name=''", "name='x' required='true'",
                                 "name='x' required='False'", "name='x' required=''"}) {
    SCOPED_TRACE(attributes);
    Reader reader;
    EXPECT_EQ(rejectionBy<ConfigParser::ConfigException>([&] {
                reader.read("<icon src='i'/>\n\n<feature " + std::string(attributes) +
                            "/><icon src='j'/>");
              }),
              "3:0: Feature name is not a valid IRI.");
    EXPECT_EQ(reader.record().getIcons().size(), 1U);
  }
}

/// The access requests of an element with these attributes: "scheme host port [subdomains]".
std::string requestsOf(const std::string& attributes) {
  Reader reader;
  const auto record = reader.read("<access note='n' " + attributes + "/>");
  std::string shown;
  for (const Config::AccessRequest& request : record->getAccessRequestList()) {
    shown += request.allOrigins == 1 ? "*" : "";
    shown += request.scheme + " " + request.host + " " + std::to_string(request.port);
    shown += request.subdomains ? " subdomains" : "";
    EXPECT_EQ(show(request.element->getSingleAttributeValue("note")), "n");
  }
  EXPECT_EQ(reader.getErrorText(), "");
  return shown;
}

TEST(Access, OriginsAreSchemeHostAndPort) {
  const auto requests = [](const std::string& origin) {
    return requestsOf("origin='" + origin + "'");
  };
  expectRows(R"(
      http://example.org => http example.org 80  https://example.org => https example.org 443
      https://example.org:8443 => https example.org 8443  http://example.org: => http example.org 80
      http://example.org:0 => http example.org 0  http://example.org:65535 => http example.org 65535
      ftp://example.org:21 => ftp example.org 21  HTTP://EXAMPLE.org:80 => HTTP example.org 80
      http://[::1]:81 => http [::1] 81
      =>  * * =>  example.org =>  //example.org =>  http:// =>  http:example.org =>
      ftp://example.org =>  HTTP://example.org =>  http://example.org/ =>  http://example.org/a =>
      http://example.org?q =>  http://example.org? =>  http://example.org#f =>  http://a..b =>
      http://u:p@example.org =>  http://@example.org =>  mailto:a@example.org =>  http://a:80x =>
      http://*.example.org =>  http://example.org:65536 =>)",
             requests);
  EXPECT_EQ(requests("http://b\u00FCcher.example"), "http xn--bcher-kva.example 80");
  EXPECT_EQ(requests(" * "), "*  0");
  EXPECT_EQ(requestsOf("tavlo:origin='*'"), "");
}

TEST(Access, SubdomainsMustBeABooleanExceptForAllOrigins) {
  EXPECT_EQ(requestsOf("origin='http://a' subdomains=' true '"), "http a 80 subdomains");
  EXPECT_EQ(requestsOf("origin='http://a' subdomains='false'"), "http a 80");
  EXPECT_EQ(requestsOf("origin='http://a' subdomains='TRUE'"), "");
  EXPECT_EQ(requestsOf("origin='http://a' subdomains=''"), "");
  EXPECT_EQ(requestsOf("origin='*' subdomains='maybe'"), "*  0");
  EXPECT_EQ(requestsOf("origin='*' subdomains='true'"), "*  0");
}

TEST(Access, RequestsAreKeptInVisitingOrderWithDuplicates) {
  const auto record = read(
      "<access origin='http://a'/><access origin='*'/><access origin='http://a'/>"
      "<access origin='http://e' xml:lang='en'/><access origin='http://f' xml:lang='fr'/>");
  std::string hosts;
  for (const Config::AccessRequest& request : record->getAccessRequestList()) {
    hosts += request.allOrigins != 0 ? "*" : request.host;
  }
  EXPECT_EQ(hosts, "ea*a");
}

}  // namespace
}  // namespace orvane::nimbrel::config
