// What is fixed in documents, by a table and by what must hold for any.

#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "check/Decoder.h"
#include "check/Fix.h"
#include "check/Markup.h"
#include "check/Vocabulary.h"
#include "tests/check/FindingLines.h"
#include "tests/support/Checks.h"
#include "tests/support/RecordDump.h"

namespace orvane::nimbrel::check {
namespace {

using test::Row;
using util::XmlNode;

std::string fixed(const std::string& document) {
  return fixDocument(document).report->document();
}

TEST(Fix, ChangesWhatIsCertainAndNothingElse) {
  const Row rows[] = {
      // Names, in both tags.
      {"<Icon\t src = 'a' ></Icon\n>\r\n<name>a</name>",
       "<icon\t src = 'a' ></icon\n>\r\n<name>a</name>"},
      {"<icons src='a'><x xmlns='urn:x'/></icons><authr/>",
       "<icon src='a'><x xmlns='urn:x'/></icon><authr/>"},
      {"<icons src='a'><icon src='b'/></icons><icons width='1'/><preferences/>", ""},
      {"<settings><setting name='debug' value='yes'/></settings>",
       "<tavlo:settings><tavlo:setting name='debug' value='yes'/></tavlo:settings>"},
      {"<tavlo:name>a</tavlo:name>", "<name>a</name>"},
      {"<license href=\"urn:a\" Href='urn:b' HREF='urn:c'/>", ""},
      {"<icon Src='a' SRC='b'/>", ""},
      {"<icon tavlo:src='a' hight='1' heigth='2' widht='&#x33;'/>",
       "<icon src='a' hight='1' heigth='2' width='&#x33;'/>"},
      {"<content href='a'/><access uri='*'/><preference key='a'/>",
       "<content src='a'/><access origin='*'/><preference name='a'/>"},
      {"<icon w:src='a' xmlns:w='http://www.w3.org/ns/widgets'/>",
       "<icon src='a' xmlns:w='http://www.w3.org/ns/widgets'/>"},
      {"<name lang='en'>a</name><license src='a.txt'/>", ""},
      // Another word, or another name.
      {"<game>a</game><nmae>b</nmae><reference name='a'/><context src='a'/><nam xml:lang='de'/>",
       "<game>a</game><name>b</name><reference name='a'/><context src='a'/>"
       "<name xml:lang='de'/>"},
      {"<tavlo:resource><tavlo:asset key='a' value='b'/></tavlo:resource><tavlo:gesture/>", ""},
      // What is in the way stays.
      {"<name>a</name><Name>b</Name><Description>c</Description>",
       "<name>a</name><Name>b</Name><description>c</description>"},
      {"<icons src='a'/><icon src='a' heigth='1'/>", "<icons src='a'/><icon src='a' height='1'/>"},
      {"<x xmlns='urn:x'/><name xmlns=''/>", ""},
      {"<tavlo:network><x:aset xmlns:x='urn:x' key='a'/></tavlo:network>", ""},
      {"<tavlo:network><tavlo:asset key='maxconnections' value=''/></tavlo:network>", ""},
      {"<tavlo:Network><tavlo:asset key='maxConnections' value=''/></tavlo:Network>", ""},
      {"<Name>a</Name><tavlo:network><tavlo:aset key='user-agent' value='b'/>"
       "<tavlo:asset key='maxConnections' value=''/></tavlo:network>",
       "<name>a</name><tavlo:network><tavlo:aset key='user-agent' value='b'/>"
       "<tavlo:asset key='maxConnections' value=''/></tavlo:network>"},
      {"<icon scr='a' heigth='1'/><icon src='b' heigth='1'/><icons src='a'/><Icon src='b'/>",
       "<icon src='a' height='1'/><icon src='b' height='1'/><icons src='a'/><Icon src='b'/>"},
      {"<tavlo:network><tavlo:errorpage src='a'/><tavlo:errorpage src='b'/></tavlo:network>",
       "<tavlo:network><tavlo:errorPage src='a'/><tavlo:errorpage src='b'/></tavlo:network>"},
      {"<icon src='a' width='1px'/><icon src='a' width='2px'/>",
       "<icon src='a' width='1'/><icon src='a' width='2'/>"},
      {"<tavlo:settings><tavlo:setting name='defaultFontSize300' value='1'/>"
       "<tavlo:setting name='defaultFontsize' value='2'/></tavlo:settings>",
       ""},
      {"<tavlo:messaging><tavlo:app name='b' value='TRUE'/><tavlo:ap name='a' value='on'/>"
       "<app name='b' Value='yes'/></tavlo:messaging>",
       "<tavlo:messaging><tavlo:app name='b' value='true'/><tavlo:app name='a' value='on'/>"
       "<app name='b' Value='yes'/></tavlo:messaging>"},
      {"<widget xmlns='http://www.w3.org/ns/widgets'><Name/><tavlo:network>"
       "<tavlo:asset key='maxConnections' value=''/></tavlo:network></widget>",
       "<widget xmlns='http://www.w3.org/ns/widgets'><name/><tavlo:network>"
       "<tavlo:asset key='maxConnections' value=''/></tavlo:network></widget>"},
      // Values.
      {"<icon src='a' width=' 480px ' height=\"48 PX\"/>",
       "<icon src='a' width=' 480 ' height=\"48\"/>"},
      {"<icon src='a' width='48%' height='4.5px'/>", ""},
      {"<tavlo:settings><tavlo:setting name='defaultFontSize' value='16px'/>"
       "<tavlo:setting name='minimumFontSize' value='9pt'/></tavlo:settings>",
       "<tavlo:settings><tavlo:setting name='defaultFontSize' value='16'/>"
       "<tavlo:setting name='minimumFontSize' value='9pt'/></tavlo:settings>"},
      {"<access origin='http://a.example:81/x?y&amp;z'/><access origin=' https://b.example/ '/>",
       "<access origin='http://a.example:81'/><access origin=' https://b.example '/>"},
      {"<access origin='HTTP://a.example/'/>", "<access origin='http://a.example'/>"},
      {"<access origin='http://10.0.0.0/8'/><access origin='http://localhost/api:8080'/>"
       "<access origin='http://a.example/8x'/>",
       "<access origin='http://10.0.0.0/8'/><access origin='http://localhost/api:8080'/>"
       "<access origin='http://a.example'/>"},
      {"<access origin='ftp://a.example/'/><access origin='http://u@a.example/'/>"
       "<access origin='a.example'/><access origin='*.a.example'/><access "
       "origin='localhost:8080'/>",
       ""},
      {"<access origin='http://*.a.example:8080'/><access origin='https://*.b.example' "
       "Subdomains='true'/><access origin='https://*.c.example' subdomains='false'/>",
       "<access origin='http://a.example:8080' subdomains=\"true\"/><access "
       "origin='https://b.example' subdomains='true'/><access origin='https://*.c.example' "
       "subdomains='false'/>"},
      {"<access origin='http:/a'/><access origin='http:\\\\b'/><access origin='[ * ]'/>"
       "<access origin='http:\\\\10.0.0.0\\8'/><access origin='\u201Chttp://c\u201D'/>"
       "<access origin='http://d\u00A0http://e'/>",
       "<access origin='http://a'/><access origin='http://b'/><access origin='*'/>"
       "<access origin='http:\\\\10.0.0.0\\8'/><access origin='http://c'/>"
       "<access origin='http://d\u00A0http://e'/>"},
      // What a word processor writes.
      {"<ic\u043En s\u200Crc='icons\\16.png' width='\u201C48\u201D' height='4\u200B8\u00A0'/>"
       "<icon src='a' width='4\u00A08' height='0px'/>",
       "<icon src='icons/16.png' width='48' height='48'/>"
       "<icon src='a' width='4\u00A08' height='0px'/>"},
      {"<tavlo:network><tavlo:asset key='http\u2013header' value='a'/></tavlo:network>"
       "<tavlo:settings><tavlo:setting name='disable_zel_features' value='\u201Cyes\u201D'/>"
       "</tavlo:settings><tavlo:cookiejar><tavlo:asset key='persist\u200Bent' value='tru\u0435'/>"
       "</tavlo:cookiejar>",
       "<tavlo:network><tavlo:asset key='http-header' value='a'/></tavlo:network>"
       "<tavlo:settings><tavlo:setting name='disable-zel-features' value='yes'/>"
       "</tavlo:settings><tavlo:cookiejar><tavlo:asset key='persistent' value='true'/>"
       "</tavlo:cookiejar>"},
      {"<name xml:lang='en\u2013US\u00A0'>a</name><name xml:lang='e n'>b</name>",
       "<name xml:lang='en-US'>a</name><name xml:lang='e n'>b</name>"},
      {"<name dir='Rtl'>a<span dir='ltr '/><b dir='rtr'/></name>",
       "<name dir='rtl'>a<span dir='ltr'/><b dir='rtr'/></name>"},
      {"<preference name='a' readonly='NO'/><preference name='b' readonly='1'/>",
       "<preference name='a' readonly='false'/><preference name='b' readonly='1'/>"},
      {"<name xml:lang='en_US'>a</name><name xml:lang='English'>b</name>",
       "<name xml:lang='en-US'>a</name><name xml:lang='English'>b</name>"},
      {"<name xml:lang='en-us_x'>a</name><name xml:lang='x_de'>b</name>", ""},
      {"<author href='http://a.example/a b'/><feature required='false' name='urn:a b'/>",
       "<author href='http://a.example/a%20b'/><feature required='false' name='urn:a b'/>"},
      // Settings, of which one after another comes to light.
      {"<tavlo:network><aset Key='maxconnections' Value='8'></aset><tavlo:errorpage src='a'/>"
       "<tavlo:asset key='enableCaching' value='yes'/></tavlo:network>",
       "<tavlo:network><tavlo:asset key='maxConnections' value='8'></tavlo:asset>"
       "<tavlo:errorPage src='a'/><tavlo:asset key='enableCaching' value='true'/>"
       "</tavlo:network>"},
      {"<tavlo:messaging><tavlo:ap name='a' value='on'/><tavlo:app name='b'/>"
       "<tavlo:ap name='c' value='NO'/></tavlo:messaging>",
       "<tavlo:messaging><tavlo:app name='a' value='on'/><tavlo:app name='b'/>"
       "<tavlo:ap name='c' value='NO'/></tavlo:messaging>"},
      {"<tavlo:messaging><tavlo:app name='a' value='TRUE'/><tavlo:app name='b' value='No'/>"
       "</tavlo:messaging>",
       "<tavlo:messaging><tavlo:app name='a' value='true'/><tavlo:app name='b' value='no'/>"
       "</tavlo:messaging>"},
      {"<tavlo:resources><tavlo:asset key='DatabaseStorag' value='yes'/>"
       "<tavlo:asset key='application-cache-path' value='a'/></tavlo:resources>",
       ""},
      {"<tavlo:auth><tavlo:asset key='a' value='yes'/><tavlo:asset key='b' value='Token'/>"
       "</tavlo:auth>",
       "<tavlo:auth><tavlo:asset key='a' value='yes'/><tavlo:asset key='b' value='token'/>"
       "</tavlo:auth>"},
      // The root.
      {"<widget/>", "<widget xmlns=\"http://www.w3.org/ns/widgets\"/>"},
      {"<?x?><w:Widget xmlns:w='https://www.w3.org/ns/widgets'><name/></w:Widget>",
       "<?x?><w:widget xmlns:w='http://www.w3.org/ns/widgets'><w:name/></w:widget>"},
      {"<widget xmlns='urn:x'/>", ""},
      {"<widget xmlns='http://www.w3.org/ns/widgets' xmlns:tavlo='http://www.w3.org/ns/widgets'>"
       "<tavlo:chrome/></widget>",
       std::string("<widget xmlns='http://www.w3.org/ns/widgets' xmlns:tavlo='") +
           config::EXTENSION_NAMESPACE + "'><tavlo:chrome/></widget>"},
      {"<widget xmlns='http://www.w3.org/ns/widgets' id='http://a.example/a b'/>", ""},
      {"<widget xmlns='http://www.w3.org/ns/widgets'"
       " xmlns:a='http://tavlo.example/ns/widget-extension' a:applicationid='b'/>",
       "<widget xmlns='http://www.w3.org/ns/widgets'"
       " xmlns:a='http://tavlo.example/ns/widget-extensions' a:applicationId='b'/>"},
      {"<widget xmlns='http://www.w3.org/ns/widgets' viewmodes='windowed, fulscreen,floating'>"
       "<tavlo:export resource='a'/></widget>",
       std::string("<widget xmlns:tavlo=\"") + config::EXTENSION_NAMESPACE +
           "\" xmlns='http://www.w3.org/ns/widgets' viewmodes='windowed fullscreen floating'>"
           "<tavlo:export resource='a'/></widget>"},
      {"<widget xmlns='http://www.w3.org/ns/widgets' xmlns:tavlo=''><tavlo:network/></widget>", ""},
      {"<widget xmlns='http://www.w3.org/ns/widgets' viewmodes='fulscreen,own' Id='urn:a'/>",
       "<widget xmlns='http://www.w3.org/ns/widgets' viewmodes='fulscreen,own' id='urn:a'/>"},
      // Elements out of entities have no certain place.
      {"<?x?><!DOCTYPE widget [<!ENTITY e \"<icon/>\">]>"
       "<widget xmlns='http://www.w3.org/ns/widgets'>&e;<Icon src='a'/></widget>",
       ""},
  };
  for (const auto& [before, after] : rows) {
    EXPECT_EQ(fixed(documentOf(before)), documentOf(after.empty() ? before : after));
  }
}

TEST(Fix, KeepsTheEncoding) {
  const auto document = [](const std::string& encoding, const std::string& width) {
    return "<?xml version='1.0' encoding='" + encoding +
           "'?>\r\n<widget xmlns='http://www.w3.org/ns/widgets'>"
           "<icon src='\xC3\xA9' width='" +
           width + "'/></widget>";
  };
  for (const char* name :
       {"UTF-8", "ISO-8859-1", "windows-1252", "GB18030", "UTF-16LE", "UTF-16BE", "UTF-32LE"}) {
    SCOPED_TRACE(name);
    const std::string mark = name[3] == '-' ? "\xEF\xBB\xBF" : "";  // of UTF
    EXPECT_EQ(fixed(encode(mark + document(name, "48px"), name).value()),
              encode(mark + document(name, "48"), name).value());
  }
  // The host is written as a reference, since the encoding has no such letter.
  const std::string ascii = "<?xml version='1.0' encoding='US-ASCII'?>" +
                            test::widget("<access origin='http://&#xE9;.example/'/>");
  EXPECT_EQ(fixed(ascii), ascii);
}

// An empty number hides the next one.
TEST(Fix, LeavesAloneManyFixesThatDoHarm) {
  std::string settings;
  for (const char* key : {"idleconnectionsTimeout_sec", "maxconnections", "maxconnectionsPerHost",
                          "maxconnectionsPerProxy", "maxkeepAliveProxyConnections"}) {
    settings += test::asset(key, "");
  }
  const std::string network = test::extension("network", settings);
  EXPECT_EQ(fixed(test::widget(network + "<Name/>")), test::widget(network + "<name/>"));
}

// Each name that is fixed brings the next mistake to light.
TEST(Fix, CountsTheFixesOfAllRounds) {
  const struct {
    const char* document;
    std::size_t count;
  } rows[] = {
      {"<name>a</name>", 0},
      {"<icon src='a' width='1px'/>", 1},
      {"<tavlo:network><tavlo:asset Key='enablecaching' value='YES'/></tavlo:network>", 3},
      {"<tavlo:Cookiejar><aset Key='Persistent' value='YES'/></tavlo:Cookiejar>", 4},
      {"<Name>a</Name><name>b</name><Description>c</Description>", 1},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(fixDocument(documentOf(row.document)).count, row.count) << row.document;
  }
}

// With so many it is not known in time which do harm; then the next run must make none either.
TEST(Fix, LeavesAloneWhatTakesTooLong) {
  std::string names;
  for (int i = 0; i < 1000; ++i) {
    names += "<Name>a</Name><description xml:lang='en_US'>b</description>";
  }
  const std::string document = test::widget("<name>a</name>" + names);
  EXPECT_EQ(fixDocument(document).count, 0U);
}

TEST(Fix, TakesNoElementFromItsUsers) {
  const std::string document = test::widget(
      "<name xml:lang='en_US'>a</name><description xml:lang='en_US'>b</description>"
      "<description xml:lang='en'>c</description>");
  const std::vector<std::string> locales = {"en_US", "en"};
  EXPECT_EQ(fixDocument(document, {locales}).report->document(), document);
}

TEST(Fix, IsMadeInTimeHoweverMuchThereIs) {
  const auto misspelt = [](std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
      all += "<tavlo:permision Name='" + std::to_string(i) + "'/>";
    }
    return test::widget(test::extension("permissions", all));
  };
  FixedDocument result;
  const std::size_t count = test::expectCostInProportion(
      2500, misspelt, [&](const std::string& document) { result = fixDocument(document); });
  EXPECT_EQ(result.count, count);
  EXPECT_TRUE(result.report->findings().empty());
}

// What was misspelt becomes what it was, or stays: no other name is ever put in its place.
TEST(Fix, FindsBackToTheExample) {
  const std::string example = test::contentOf(NIMBREL_EXAMPLES "/config.xml");
  std::size_t count = 0;
  std::size_t restored = 0;
  const auto misspell = [&](Span name, std::size_t endTag) {
    const auto without = [&](std::string text, std::size_t at) { return text.erase(at, 1); };
    std::string document =
        endTag == 0 ? example : without(example, endTag + 1 + name.end - name.begin);
    document = without(document, name.end - 1);
    const std::string result = fixed(document);
    EXPECT_TRUE(result == example || result == document) << result;
    ++count;
    restored += result == example ? 1 : 0;
  };
  for (const ElementTags& element : elementsOf(example)) {
    const Tag tag = readTag(example, element.start);
    misspell(tag.name, element.end);
    for (const TagAttribute& attribute : tag.attributes) {
      misspell(attribute.name, 0);
    }
  }
  EXPECT_GT(count, 200U);
  EXPECT_GT(restored, count * 9 / 10);
}

/// All documents that come with the project.
std::vector<std::string> manyDocuments() {
  std::vector<std::string> documents = {test::contentOf(NIMBREL_TEST_DATA "/faulty.xml")};
  std::istringstream table(test::contentOf(NIMBREL_TEST_DATA "/findings.txt"));
  for (std::string line; std::getline(table, line);) {
    if (!line.empty() && line.front() != ' ' && line.front() != '#') {
      documents.push_back(documentOf(line.substr(std::min(line.find('<'), line.size()))));
    }
  }
  for (const CodeDescription& kind : codeDescriptions()) {
    documents.push_back(documentOf(std::string(kind.bad)));
  }
  for (const auto& entry : std::filesystem::recursive_directory_iterator(NIMBREL_EXAMPLES)) {
    if (entry.path().extension() == ".xml") {
      documents.push_back(test::contentOf(entry.path()));
    }
  }
  for (const char* folder : {"document", "check"}) {
    for (const auto& entry :
         std::filesystem::directory_iterator(NIMBREL_SEEDS + ("/" + std::string(folder)))) {
      const std::string seed = test::contentOf(entry.path());
      documents.push_back(seed.substr(seed.find('\n') + 1));
    }
  }
  return documents;
}

/// What a record holds by the members of its JSON; nothing when the document is rejected.
std::map<std::string, std::string> membersOfRecord(const std::string& document) {
  std::map<std::string, std::string> members;
  test::Reader reader;
  try {
    static_cast<void>(reader.document(document));
  } catch (const std::exception&) {
    return members;
  }
  std::istringstream dump(test::dumpOf(reader.record()));
  for (std::string line; std::getline(dump, line);) {
    members[line.substr(0, line.find_first_of(". "))] += line + '\n';
  }
  return members;
}

/// The members that an element below the root fills, or for null the root.
std::set<std::string> filledBy(const XmlNode* element) {
  std::set<std::string> members = {"elements", "line", "content", "origin"};
  const config::ElementDescription* const known =
      element == nullptr ? &config::widgetDescription() : describe(*element);
  const auto add = [&](std::string_view field) {
    const std::string_view path = known->member.empty() ? field : known->member;
    members.emplace(path.substr(0, path.find_first_of(".[")));
  };
  if (known != nullptr) {
    add(known->textField);
    for (const auto& attribute : known->attributes) {
      add(attribute.field);
    }
    for (const auto& child : known->children) {
      for (const auto& attribute : child.attributes) {
        add(attribute.field);
      }
    }
    for (const auto& key : known->keys) {
      add(key.field);
    }
    if (known->anyKey != nullptr) {
      add(known->anyKey->field);
    }
  }
  return members;
}

/// The number of the child of the root that an element is in; none for the root.
std::optional<std::size_t> childOfRoot(const XmlNode* element) {
  if (element == nullptr || element->parent() == nullptr) {
    return std::nullopt;
  }
  while (element->parent()->parent() != nullptr) {
    element = element->parent();
  }
  std::size_t number = 0;
  for (const XmlNode* child = element->parent()->firstElementChild(); child != element;
       child = child->nextElementSibling()) {
    ++number;
  }
  return number;
}

/// What a record may differ in when the findings that are gone were fixed.
std::set<std::string> membersOfFixed(const Report& before, const Report& after) {
  std::set<std::string> left;
  for (const Diagnostic& finding : after.findings()) {
    left.insert(lineOf(after, finding));
  }
  const std::shared_ptr<XmlNode> root = test::rootOf(after.document());
  std::set<std::string> members;
  for (const Diagnostic& finding : before.findings()) {
    if (left.count(lineOf(before, finding)) == 0) {
      const std::optional<std::size_t> number = childOfRoot(finding.element);
      const XmlNode* element = number ? root->firstElementChild() : nullptr;
      for (std::size_t i = 0; i < number.value_or(0); ++i) {
        element = element->nextElementSibling();
      }
      members.merge(filledBy(element));
    }
  }
  return members;
}

TEST(Fix, HoldsItsPromisesForEveryDocument) {
  std::size_t changed = 0;
  for (const std::string& document : manyDocuments()) {
    SCOPED_TRACE(document);
    const auto before = checkDocument(document);
    const FixedDocument result = fixDocument(document);
    const std::string& after = result.report->document();
    EXPECT_EQ(result.count == 0, after == document);
    const FixedDocument again = fixDocument(after);
    EXPECT_EQ(again.count, 0U);
    EXPECT_EQ(again.report->document(), after);
    EXPECT_EQ(std::count(after.begin(), after.end(), '\n'),
              std::count(document.begin(), document.end(), '\n'));
    if (result.count == 0) {
      continue;
    }
    ++changed;
    EXPECT_LT(result.report->findings().size(), before->findings().size() + result.count);
    const auto record = membersOfRecord(document);
    const auto fixedRecord = membersOfRecord(after);
    if (!record.empty()) {
      const std::set<std::string> allowed = membersOfFixed(*before, *result.report);
      EXPECT_FALSE(fixedRecord.empty());
      for (const auto* const other : {&record, &fixedRecord}) {
        for (const auto& [name, values] : *other) {
          const bool isSame = record.count(name) != 0 && fixedRecord.count(name) != 0 &&
                              record.at(name) == fixedRecord.at(name);
          EXPECT_TRUE(isSame || allowed.count(name) != 0) << values;
        }
      }
    }
  }
  EXPECT_GT(changed, 40U);
}

}  // namespace
}  // namespace orvane::nimbrel::check
