#include <gmock/gmock.h>

#include <set>

#include "tests/tools/Tool.h"
#include "util/XmlNode.h"
#include "util/XmlParserLibXml.h"

namespace nimbrel_test {
namespace {

using orvane::nimbrel::util::XmlDocument;
using orvane::nimbrel::util::XmlNode;
using testing::HasSubstr;
using testing::Not;

/// A page, which must be well-formed.
struct Page {
  std::string html;
  std::shared_ptr<XmlDocument> tree;
};

Page pageOf(const std::string& document, int status = 0, std::vector<std::string> options = {}) {
  options.insert(options.begin(), {"show", "--format", "html", "-"});
  Page page;
  const Outcome outcome = run(options, document);
  EXPECT_EQ(outcome.status, status) << outcome.error;
  page.html = outcome.out;
  page.tree = orvane::nimbrel::util::XmlParserLibXml().parse(
      page.html.data(), static_cast<unsigned int>(page.html.size()), nullptr, nullptr);
  return page;
}

template <typename Visit>
void forEachElement(const XmlNode& element, const Visit& visit) {
  visit(element);
  for (const XmlNode* child = element.firstElementChild(); child != nullptr;
       child = child->nextElementSibling()) {
    forEachElement(*child, visit);
  }
}

std::string textOf(const XmlNode& node) {
  std::string text = node.getContent() ? node.getContent().get() : "";
  for (const auto& child : node.getChildren()) {
    text += textOf(*child);
  }
  return text;
}

/// The headings of a page with their levels.
std::string outlineOf(const Page& page) {
  std::string outline;
  forEachElement(*page.tree->getDocumentElement(), [&](const XmlNode& element) {
    const std::string name = element.getName();
    if (name.size() == 2 && name[0] == 'h' && name[1] >= '1' && name[1] <= '6') {
      outline += name.substr(1) + ' ' + textOf(element) + '\n';
    }
  });
  return outline;
}

/// Each link leads to an element, of which there is one.
void expectLinksToLead(const Page& page) {
  std::multiset<std::string> targets;
  std::set<std::string> links;
  forEachElement(*page.tree->getDocumentElement(), [&](const XmlNode& element) {
    if (const std::string_view id = element.attributeView("id"); !id.empty()) {
      targets.emplace(id);
    }
    if (element.getName() == "a") {
      links.emplace(element.attributeView("href").substr(1));
    }
  });
  for (const std::string& link : links) {
    EXPECT_EQ(targets.count(link), 1U) << link;
  }
}

constexpr char REQUESTS_OUTLINE[] =
    "2 What it asks for\n3 Security\n3 Network access\n3 Features\n3 Permissions\n3 Messages\n3 "
    "Exports\n";

TEST(PageTool, ShowsWhatEachLanguageGets) {
  const std::string names =
      "<name>plain</name><name xml:lang='de'>deutsch</name><name xml:lang='he' dir='rtl'>a"
      "<span dir='lro' xml:lang='en'>b</span></name><access origin='http://x.example'/>"
      "<access origin='*' xml:lang='de'/>";
  EXPECT_EQ(
      outlineOf(pageOf(widget(names))),
      std::string("1 plain\n2 As users see it\n3 Users of German (de)\n3 Users of Hebrew (he)\n"
                  "3 Users of every other language\n") +
          REQUESTS_OUTLINE + "2 Check\n");
  EXPECT_THAT(outlineOf(pageOf(widget("<name xml:lang='de'>x</name>"))),
              testing::StartsWith("1 x\n"));
  const Page german = pageOf(widget(names, "defaultlocale='de'"));
  EXPECT_EQ(outlineOf(german),
            std::string("1 deutsch\n2 As users see it\n3 Users of German (de) and every other "
                        "language\n3 Users of Hebrew (he)\n") +
                REQUESTS_OUTLINE + "2 Check\n3 What the codes mean\n");
  EXPECT_THAT(german.html, HasSubstr("<bdi lang=\"he\" dir=\"rtl\">a<bdo lang=\"en\" dir=\"ltr\">b"
                                     "</bdo></bdi>"));
  EXPECT_THAT(german.html, HasSubstr("this host only, not encrypted</span></li>"));
  EXPECT_THAT(pageOf(widget(names), 0, {"--locale", "he"}).html,
              Not(HasSubstr("every address on the network")));
  EXPECT_THAT(pageOf(widget(names)).html,
              HasSubstr("every address on the network</span> <span class=\"whom\">only for users "
                        "of German (<bdi class=\"tag\">de</bdi>)</span>"));
}

TEST(PageTool, SaysWhyThereIsNothingToSee) {
  EXPECT_THAT(pageOf("<widget>", 1).html, HasSubstr("nobody gets this application"));
  EXPECT_THAT(pageOf("<a/>", 1).html, HasSubstr("Rejected document"));
  EXPECT_THAT(pageOf("PK\x03\x04", 1).html, HasSubstr("no usable ZIP archive"));
  const Page german = pageOf(widget("<feature name='x' xml:lang='de'/>"), 1);
  EXPECT_THAT(german.html, HasSubstr("They do not get this application (<a href=\"#error-0\">"
                                     "line 1: required-feature-name</a>)"));
  EXPECT_THAT(german.html, HasSubstr("It asks for no feature"));
  const std::string number =
      widget("<t:network>\n<t:asset key='maxConnections' value=''/></t:network>");
  EXPECT_EQ(run({"show", "--format", "html", "-"}, number).error, run({"show", "-"}, number).error);
  const Outcome missing = run({"show", "--format", "html", "/nowhere"});
  EXPECT_EQ(missing.status, 2);
  EXPECT_EQ(missing.out, "");
}

TEST(PageTool, AHostileDocumentIsInert) {
  const std::string document = contentOf(NIMBREL_TEST_DATA "/hostile.xml");
  const std::set<std::string> elements = {
      "html",   "head",    "meta",    "link", "title",   "style",   "body", "a",
      "header", "p",       "bdi",     "h1",   "dl",      "div",     "dt",   "dd",
      "nav",    "ul",      "li",      "main", "h2",      "h3",      "bdo",  "span",
      "img",    "section", "article", "code", "details", "summary", "mark", "ol",
      "br",     "strong",  "footer",  "wbr",  "pre"};
  const std::set<std::string> attributes = {"lang",    "dir",    "charset",    "http-equiv",
                                            "content", "name",   "rel",        "href",
                                            "class",   "id",     "src",        "alt",
                                            "width",   "height", "aria-label", "aria-labelledby"};
  for (const std::string& input : {document, document + '<', std::string("<\0", 2)}) {
    const Page page = pageOf(input, input == document ? 0 : 1);
    forEachElement(*page.tree->getDocumentElement(), [&](const XmlNode& element) {
      EXPECT_EQ(elements.count(element.getName()), 1U) << element.getName();
      for (std::size_t i = 0; i < element.attributeCount(); ++i) {
        const std::string name(element.attributeAt(i).name);
        const std::string value(element.attributeAt(i).value);
        EXPECT_EQ(attributes.count(name), 1U) << name;
        EXPECT_THAT(value, Not(HasSubstr("alert"))) << name;
        EXPECT_NE(value, "a--b") << name;
        EXPECT_TRUE(name != "href" || value[0] == '#' || value == "data:,") << value;
      }
    });
    // NOLINTNEXTLINE(misc-misleading-bidirectional): the very bytes that must not come through
    for (const char* raw : {"\xC2\x9B", "\x7F", "\xE2\x80\xAE", "\xE2\x81\xA6", "\xEF\xBB\xBF",
                            "\xEF\xB7\x90", "\r"}) {
      EXPECT_THAT(page.html, Not(HasSubstr(raw)));
    }
    EXPECT_EQ(page.html.find("</style>"), page.html.rfind("</style>"));
    expectLinksToLead(page);
  }
  // What the reader sees is what was written.
  EXPECT_THAT(
      textOf(*pageOf(document).tree->getDocumentElement()),
      HasSubstr("</style><script>alert(1)</script><img src=x onerror=alert(1)>\" onclick="
                "\"alert(1) ' ]]> --> &amp; javascript:alert(1)//U+202EU+2066U+200FU+009BU+007F"
                "U+FEFFU+FDD0U+000D"));
}

// Each row is the text of an element and what the page has of it.
TEST(PageTool, NamesCharactersThatNobodySees) {
  const Row rows[] = {
      {"pay\u00ADpal", "payU+00ADpal"},
      {"a\u200Bb\u2060c\u2062d\u3164e\u034Ff", "aU+200BbU+2060cU+2062dU+3164eU+034Ff"},
      {"\U0001F3F4\U000E0067\uFE0F", "\U0001F3F4U+E0067U+FE0F"},
      {"pay\u200Dpal \u200C1", "payU+200Dpal U+200C1"},
      {"\u0645\u06CC\u200C\u062E\u0648\u0627\u0647\u0645", ""},  // joiners that shape letters
      {"\u0915\u094D\u200D\u0937 \U0001F469\u200D\U0001F4BB", ""},
      {"\u05E9\u05DC\u05D5\u05DD \u00FC \u65E5\u672C", ""},
  };
  for (const auto& [text, shown] : rows) {
    const std::string outline = outlineOf(pageOf(widget("<name>" + text + "</name>")));
    EXPECT_THAT(outline, testing::StartsWith("1 " + (shown.empty() ? text : shown) + '\n'));
  }
}

TEST(PageTool, SaysFirstWhetherAllIsWell) {
  const Row rows[] = {
      {"<name>x</name>", "No errors or warnings"},
      {"<shop xmlns='urn:s'/>", "No errors or warnings 1 note"},
      {"<icon/><icon/>", "Accepted with warnings 2 warnings"},
      {"<feature name='x' xml:lang='de'/><icon/>", "Rejected for some users 1 error, 1 warning"},
      {"<feature name='x'/>", "Rejected 1 error"},
  };
  expectRows(rows, [](const std::string& children) {
    const bool isRejected = children.find("feature") != std::string::npos;
    const Page page = pageOf(widget(children), isRejected ? 1 : 0);
    std::string verdict;
    forEachElement(*page.tree->getDocumentElement(), [&](const XmlNode& element) {
      if (element.attributeView("class") == "verdict") {
        verdict = textOf(element);
      }
    });
    return verdict;
  });
}

TEST(PageTool, GroupsFindingsByLineThoseWithErrorsFirst) {
  const Page page = pageOf(widget("\n<icon/>\n<icon src=''/><feature name='x' required='1'/>"
                                  "<icon width='0' src='i'/>\n<feature name='y'/>\n<icons/>"),
                           1);
  std::string lines;
  forEachElement(*page.tree->getDocumentElement(), [&](const XmlNode& element) {
    const std::string name = element.getName();
    if (element.attributeView("class") == "line") {
      lines += '\n' + textOf(element) + ':';
    } else if (name == "mark" || element.attributeView("class") == "code") {
      lines += ' ' + textOf(element);
    }
  });
  EXPECT_EQ(lines,
            "\nline 3: '' x 1 0 required-feature-name missing-attribute not-a-boolean not-a-number"
            "\nline 4: y required-feature-name"
            "\nline 2: icon missing-attribute"
            "\nline 5: icons unknown-element");
  expectLinksToLead(page);
}

TEST(PageTool, HasAllOfTheRecordWhatIsSecuritysFirst) {
  const std::string html = pageOf(contentOf(NIMBREL_EXAMPLES "/config.xml")).html;
  const std::size_t rest = html.find("Other settings and preferences");
  for (const char* setting :
       {"overrideProxy = proxy.linea.example:3128", "allowTlsFallback = yes", "inspector = yes",
        "persistent = yes", "authentication = token", "httpHeaders = X-Linea-Client: tavlo",
        "allowHTTPSApplicationManifestCrossDomain = yes"}) {
    EXPECT_LT(html.find(setting), html.find("Network access")) << setting;
  }
  for (const char* setting :
       {"home-stop = marlen:hauptbahnhof", "maxConnections = 32", "zoomFactor = 1.1",
        "saveContext = no", "drag = enabled", "search bar = stops-and-places",
        "localStorageQuota = 5242880", "TimetableRefresh = daily",
        "<bdi>properties</bdi> = <bdi>min=0.5;max=8</bdi>"}) {
    EXPECT_GT(html.find(setting), rest) << setting;
    EXPECT_NE(html.find(setting), std::string::npos) << setting;
  }
  // What all languages share is said once, an address broken where it may be.
  const std::string author = "https://<wbr/>www.linea.example/<wbr/>about";
  EXPECT_NE(html.find(author), std::string::npos);
  EXPECT_EQ(html.find(author), html.rfind(author));
  // A key of the document's own is taken for no setting of that name.
  EXPECT_THAT(
      pageOf(widget("<t:resources><t:asset key='inspector' value='yes'/></t:resources>")).html,
      HasSubstr("It sets no proxy, no TLS fallback, no inspector"));
}

// A record can take 57 times the size of its document, as each run of a text has its language.
TEST(PageTool, HoldsOneRecordAtATime) {
  if (NIMBREL_SANITIZE) {
    GTEST_SKIP() << "a sanitizer keeps what is freed";
  }
  std::string text = "<name xml:lang='de'>x</name><license><span xml:lang='";
  text.append(128, 'l').append("'>");
  for (int i = 0; i < 200'000; ++i) {
    text += "x<b/>";
  }
  const auto memoryOf = [](const std::string& children) {
    return run({"show", "--format", "html", "-"}, widget(children)).memory;
  };
  const long size = static_cast<long>(text.size()) / 1024;
  EXPECT_LT(memoryOf(text + "</span></license>") - memoryOf("<name>x</name>"), 90 * size);
}

TEST(PageTool, ABigDocumentHasAPageOfLimitedSize) {
  std::string children = "<feature name='urn:f'>";
  for (int i = 0; i < 3000; ++i) {
    const std::string number = std::to_string(i);
    children.append("<param name='p' value='").append(number).append("'/>");
  }
  children += "</feature>";
  for (int i = 0; i < 3000; ++i) {
    const std::string number = std::to_string(i);
    children.append("<shop xmlns='urn:s'/><icon/><access origin='http://x:").append(number);
    children.append("'/><name xml:lang='l").append(number).append("'>x</name>");
  }
  const Page page =
      pageOf(widget(children + "<name>" + std::string(1000, 'x') + "</name><description>" +
                    std::string(9000, 'y') + "</description><t:resources/><icons/>"));
  EXPECT_LT(page.html.size(), 1500000U);
  for (const char* sentence :
       {"Not on this page: 2000 more.", "Not on this page: 2937 more languages.",
        "and 2950 more parameters", "… and 700 more characters", "… and 8200 more characters",
        "more findings. The most severe are shown", "Show 2988 more"}) {
    EXPECT_THAT(page.html, HasSubstr(sentence));
  }
  EXPECT_THAT(page.html, Not(HasSubstr(">Note<")));  // notes yield to warnings
}

}  // namespace
}  // namespace nimbrel_test
