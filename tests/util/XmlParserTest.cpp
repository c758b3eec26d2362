#include <fcntl.h>
#include <libxml/parser.h>
#include <sys/stat.h>
#include <unistd.h>

#include <limits>

#include "tests/util/XmlTestSupport.h"

namespace orvane::nimbrel::util::test {
namespace {

constexpr bool IS_OLD = LIBXML_VERSION < 21400;  // some texts are libxml2's

std::string fileRejection(const std::string& path, const char* encoding = nullptr) {
  return rejectionBy<ParseException>(
      [&] { (void)XmlParserLibXml().parse(path.c_str(), encoding); });
}

std::string utf16(std::u16string_view text, bool bigEndian) {
  std::string bytes;
  for (const char16_t unit : text) {
    const char high = static_cast<char>(unit >> 8U);
    const char low = static_cast<char>(unit & 0xFFU);
    bytes += bigEndian ? high : low;
    bytes += bigEndian ? low : high;
  }
  return bytes;
}

TEST(XmlParser, MakesOneTextOfAdjacentCharacterData) {
  const Row cases[] = {
      {"<a>x&amp;y&#x41;&#228;<![CDATA[<z>]]>\xC3\xA4 \n</a>", "a['x&yA\xC3\xA4<z>\xC3\xA4 \n']"},
      {"<a>x<!--c-->y<?p?>z</a>", "a['x'!'y'?'z']"},
      {"<a> <b/>\n</a>", "a[' 'b[]'\n']"},
      {"<a><![CDATA[]]></a>", "a[]"},
      {"<a>x<![CDATA[]]>y</a>", "a['xy']"},
      {"<a>\r\n\r</a>", "a['\n\n']"},
      {"<!--x--><?y?><!DOCTYPE a><!--z--><a/><!--x--> <?y?>", "a[]"},
      {"<!DOCTYPE a [<!ENTITY e 'y'>]><a>x&e;z&e;&e;</a>", "a['xyzyy']"},
      {"<!DOCTYPE a [<!ENTITY e '1<b/>2'>]><a>x&e;y&e;</a>", "a['x1'b[]'2y1'b[]'2']"},
      {"<!DOCTYPE a [<!ELEMENT a (b)>]><a> <b/> </a>", "a[' 'b[]' ']"},
  };
  expectRows(cases, outlineBehind(""));
  const std::string piece = repeated("\xC3\xA4x", 5000) + "&lt;";
  const std::string whole = repeated("\xC3\xA4x", 5000) + "<";
  const auto root = parseRoot("<a>" + repeated(piece, 20) + "<b/>" + piece + "</a>");
  EXPECT_EQ(root->getChildren().front()->contentView(), repeated(whole, 20));
  EXPECT_EQ(root->getChildren().back()->contentView(), whole);
}

TEST(XmlParser, AcceptsBrokenNamespaceRules) {
  expectRows(R"(
      <p:a><q:b/></p:a> => p:a[q:b[]]  <p:a xmlns:p=''/> => p:a[]
      <a xmlns='u'><p:b/><c xmlns=''/></a> => a{u}[p:b[]c[]]  <xmlns:a/> => xmlns:a[]
      <a xmlns:p='u'><p:b xmlns:p='v'/><p:c/></a> => a[b{v}[]c{u}[]]  <a:b:c/> => a:b:c[]
      <xml:a xmlns:xml='u'/> => a{http://www.w3.org/XML/1998/namespace}[]
      <p:a xmlns:p='http://www.w3.org/XML/1998/namespace'/> => p:a[]
      <a xmlns='not a URI'/> => a{not a URI}[])",
             outlineBehind(""));
}

TEST(XmlParser, ExpandsInternalEntitiesAndDefaults) {
  expectRows(R"(
      <!ENTITY e 'u'>]><a xmlns='&e;'/> => a{u}[]  <!ENTITY lt 'x'>]><a>&lt;</a> => a['<']
      <!ENTITY e 'u'>]><a xmlns:p='x&e;'><p:b/></a> => a[b{xu}[]]
      <!ENTITY e '<p:b/>'>]><a xmlns:p='u'>&e;<c xmlns:p='v'>&e;</c></a> => a[b{u}[]c[b{v}[]]]
      <!ENTITY f '[&e;]'><!ENTITY e 'x'>]><a>&f;&f;&e;</a> => a['[x][x]x']
      <!ENTITY e '1'><!ENTITY e '2'>]><a>&e;</a> => a['1']
      <!ENTITY e SYSTEM 'x'><!ENTITY e '2'>]><a>&e;</a> => a[]
      <!ENTITY lt '&#38;#60;'>]><a>&lt;</a> => a['<']  <!ENTITY e '&#60;b/>'>]><a>&e;</a> => a[b[]]
      <!ENTITY e '&#38;#60;b/>'>]><a>&e;</a> => a['<b/>']
      <!ENTITY e '<!--x-->'>]><a>1&e;2</a> => a['1'!'2']
      <!ENTITY % p SYSTEM 'x'>%p;]><a>&e;</a> => a[]
      <!ATTLIST a xmlns CDATA 'u'>]><a/> => a{u}[]
      <!ATTLIST a xmlns:p CDATA #FIXED 'u'>]><a><p:b/></a> => a[b{u}[]])",
             outlineBehind("<!DOCTYPE a ["));
  const auto root = parseRoot(
      "<!DOCTYPE a [<!ENTITY e '&#x9;x'><!ENTITY f '&e;&e;'>"
      "<!ATTLIST a b CDATA 'd&e;' c CDATA #IMPLIED xml:lang NMTOKEN ' en ' t NMTOKENS ''"
      " u CDATA '0' p:v CDATA 'w'>]><a u='&f;&f;' t='  1   2 '/>");
  const Row attributes[] = {
      {"b", "d x"}, {"c", "none"}, {"t", "1 2"}, {"u", " x x x x"}, {"p:v", "w"}};
  expectRows(attributes, [&](const std::string& name) {
    return std::string(root->getAttribute(name.c_str()).c_str());
  });
  EXPECT_EQ(root->getXmlLang(), "en");
}

TEST(XmlParser, SaysOnOneLineWhyAndWhere) {
  const Row cases[] = {
      {"x", "1:1: Start tag expected, '<' not found"},
      {"<a>\n <b></c></a>", "2:9: Opening and ending tag mismatch: b line 2 and c"},
      {"<a>\n\n", "3:1: Premature end of data in tag a line 1"},
      {"<a/>\n<b/>", "2:1: Extra content at the end of the document"},
      {"<a>\n &e;</a>", "2:5: Entity 'e' not defined"},
      {"<a b='1'\n b='2'/>", "2:7: Attribute b redefined"},
      {"<a>\n\xFF\xFE</a>",
       IS_OLD ? "2:1: Input is not proper UTF-8, indicate encoding ! Bytes: 0xFF 0xFE 0x3C 0x2F"
              : "2:1: Invalid bytes in character encoding"},
      {"<?xml version='1.0' encoding='no-such'?><a/>", "1:39: Unsupported encoding no-such"},
      // What is wrong inside an entity is found where it is used.
      {"<!DOCTYPE a [<!ENTITY e '\n\n<b>'>]><a>\n &e;</a>",
       "4:5: Premature end of data in tag b line 3"},
      {"<!DOCTYPE a [<!ENTITY e '</a>'>]><a>\n&e;", "2:4: chunk is not well balanced"},
      {"<!DOCTYPE a [\n<!ENTITY e '<b>&e;</b>'>]>\n<a>\n&e;</a>",
       "4:4: Detected an entity reference loop"},
      {"<!DOCTYPE a [\n<!ENTITY e '&f;'><!ENTITY f '&e;'>]>\n<a b='&e;'/>",
       "3:10: Detected an entity reference loop"},
  };
  expectRows(cases, [](const std::string& document) { return rejection(document); });
  EXPECT_EQ(rejection("<a>" + std::string(70000, '\n') + "</b>"),
            "70001:5: Opening and ending tag mismatch: a line 1 and b");
}

TEST(XmlParser, RejectsWhatIsNoDocument) {
  const XmlParserLibXml parser;
  const auto rejectionOfBuffer = [&](const char* bytes, unsigned int size) {
    return rejectionBy<ParseException>([&] { (void)parser.parse(bytes, size, nullptr, nullptr); });
  };
  EXPECT_EQ(rejectionOfBuffer(nullptr, 4), "0:0: There is no document");
  EXPECT_EQ(rejectionOfBuffer("<a/>", 0), "0:0: The document is empty");
  // Not a byte of it may be read: there are only four.
  constexpr auto TOO_LARGE = static_cast<unsigned int>(std::numeric_limits<int>::max()) + 1U;
  EXPECT_EQ(rejectionOfBuffer("<a/>", TOO_LARGE), "0:0: The document is too large");
  for (const char* name : {"no-such", " ", "//", "UTF-8//IGNORE", "UTF-8/"}) {
    EXPECT_EQ(rejection("<a/>", name), std::string("0:0: Unknown encoding: ") + name);
  }
  // A zero byte ends nothing.
  using namespace std::string_view_literals;
  for (const std::string_view text :
       {"<a/>\0"sv, "<a/>\0junk"sv, "\0<a/>"sv, "<a>\0</a>"sv, "<a b='\0'/>"sv, "<a\0/>"sv,
        "<!--\0--><a/>"sv, "<!DOCTYPE a [\0]><a/>"sv, "<a/><?p \0?>"sv}) {
    SCOPED_TRACE(testing::PrintToString(text));
    EXPECT_EQ(rejection(text).substr(0, 2), "1:");
  }
  EXPECT_EQ(rejection("<a/>" + std::string(5000, ' ') + '\0'),
            IS_OLD ? "1:5005: The document is not well-formed"
                   : "1:5005: Extra content at the end of the document");
}

TEST(XmlParser, RejectsEveryPrefixOfADocument) {
  const std::string document =
      "<?xml version='1.0' encoding='UTF-8'?>\n<!DOCTYPE a [<!ENTITY e '<i>\xC3\xA4</i>'>\n"
      "<!ATTLIST a b (x|y) 'x'>]>\n<p:a xml:lang='en' c=\"&#65;&amp;&e2;\"\n>"
      "\xE2\x82\xAC&e;<!--c--><?p i?><![CDATA[]]]]></p:a>";
  std::string good = document;
  good.replace(good.find("&e2;"), 4, "");
  ASSERT_EQ(rejection(good), "accepted");
  for (std::size_t size = 1; size < good.size(); ++size) {
    SCOPED_TRACE(good.substr(0, size));
    const std::string why = rejection(std::string_view(good).substr(0, size));
    EXPECT_NE(why, "accepted");
    EXPECT_NE(why.substr(0, 2), "0:");
    EXPECT_EQ(why.find('\n'), std::string::npos);
  }
}

TEST(XmlParser, ReadsEncodingsByMarkDeclarationAndArgument) {
  using namespace std::string_literals;
  const std::u16string_view text = u"<a>\u00E4\u20AC\U0001F600</a>";
  const std::string want = "a['\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80']";
  const std::string utf8 = "<a>\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80</a>";
  const std::string latin1 = "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>";
  const Folder folder;
  const struct {
    const char* name;
    std::string bytes;
    const char* encoding;
    std::string outline;  // nothing: rejected
  } cases[] = {
      {"UTF-8 with a mark", "\xEF\xBB\xBF" + utf8, nullptr, want},
      {"UTF-8 with a mark, named", "\xEF\xBB\xBF" + utf8, "UTF-8", want},
      {"UTF-16LE with a mark", "\xFF\xFE" + utf16(text, false), nullptr, want},
      {"UTF-16BE with a mark", "\xFE\xFF" + utf16(text, true), nullptr, want},
      {"UTF-16LE with a mark, named", "\xFF\xFE" + utf16(text, false), "UTF-16LE", want},
      {"UTF-16BE with a mark, named", "\xFE\xFF" + utf16(text, true), "UTF-16BE", want},
      {"UTF-16 with a mark, named", "\xFF\xFE" + utf16(text, false), "UTF-16", want},
      {"UTF-16LE without a mark, named", utf16(text, false), "UTF-16LE", want},
      {"UTF-16LE declared", utf16(u"<?xml version='1.0' encoding='UTF-16'?><a>\u00E4</a>", false),
       nullptr, "a['\xC3\xA4']"},
      {"Latin 1 declared", latin1, nullptr, "a['\xC3\xA4']"},
      {"Latin 1 named", "<a>\xE4</a>", "ISO-8859-1", "a['\xC3\xA4']"},
      {"Latin 1 declared, the empty name given", latin1, "", "a['\xC3\xA4']"},
      {"the argument overrides", "<?xml version='1.0' encoding='UTF-8'?><a>\xE4</a>", "latin1",
       "a['\xC3\xA4']"},
      {"windows-1252 declared", "<?xml version='1.0' encoding='Windows-1252'?><a>\x80</a>", nullptr,
       "a['\xE2\x82\xAC']"},
      {"KOI8-R declared", "<?xml version='1.0' encoding='koi8-r'?><a>\xC1</a>", nullptr,
       "a['\xD0\xB0']"},
      {"GB18030 declared", "<?xml version='1.0' encoding='gb18030'?><a>\x94\x39\xFC\x36</a>",
       nullptr, "a['\xF0\x9F\x98\x80']"},
      {"UCS-4 without a mark", "\0\0\0<\0\0\0a\0\0\0/\0\0\0>"s, nullptr, "a[]"},
      {"UTF-32 with a mark", "\xFF\xFE\0\0<\0\0\0a\0\0\0/\0\0\0>\0\0\0"s, nullptr, "a[]"},
      {"UTF-8 named, another declared",
       "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xC3\xA4</a>", "utf8", "a['\xC3\xA4']"},
      {"Latin 1 undeclared", "<a>\xE4</a>", nullptr, ""},
      {"overlong", "<a>\xC0\xAF</a>", nullptr, ""},
      {"surrogate in UTF-8", "<a>\xED\xA0\x80</a>", nullptr, ""},
      {"beyond Unicode", "<a>\xF4\x90\x80\x80</a>", nullptr, ""},
      {"cut short", "<a>\xE2\x82</a>", nullptr, ""},
      {"lone surrogate in UTF-16", "\xFF\xFE" + utf16(u"<a>\xD800</a>", false), nullptr, ""},
      {"odd byte at the end", "\xFF\xFE" + utf16(u"<a/>", false) + "x", nullptr, ""},
      {"bad UTF-16 behind the root", "\xFF\xFE" + utf16(u"<a/>\xDC00\xDC00", false), nullptr, ""},
      {"UTF-16 named, UTF-8 given", utf8 + " ", "UTF-16LE", ""},
      {"UTF-16 declared, UTF-8 given", "<?xml version='1.0' encoding='UTF-16'?><a/>", nullptr, ""},
      {"UTF-8 named, UTF-16 given", utf16(u"<?xml version='1.0'?><a/>", false), "UTF-8", ""},
      {"UTF-8 named, the mark of UTF-16 given", "\xFF\xFE" + utf8, "UTF-8", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const std::string why = rejection(c.bytes, c.encoding);
    if (c.outline.empty()) {
      EXPECT_EQ(why.substr(0, 2), "1:") << why;
      continue;
    }
    EXPECT_EQ(why, "accepted");
    EXPECT_EQ(outline(c.bytes, c.encoding), c.outline);
    const auto document =
        XmlParserLibXml().parse(folder.write("a.xml", c.bytes).c_str(), c.encoding);
    EXPECT_EQ(outline(document->getDocumentElement().get()), c.outline);
  }
}

// Asked for these, iconv would read its configuration and load code, wherever the
// environment says that lies.
TEST(XmlParser, RejectsOtherEncodingsByName) {
  for (const std::string name :
       {"UTF-7", "EUC-TW", "ISO-2022-JP", "IBM037", "HTML", "CESU-8", "x"}) {
    EXPECT_EQ(rejection("<?xml version='1.0' encoding='" + name + "'?><a/>"),
              "1:" + std::to_string(32 + name.size()) + ": Unsupported encoding " + name);
    EXPECT_EQ(rejection("<a/>", name.c_str()), "0:0: Unknown encoding: " + name);
  }
  const Row cases[] = {
      {"\x4C\x6F\xA7\x94\x93", "1:1: Unsupported encoding EBCDIC"},
      {"\xFF\xFE" + utf16(u"<?xml version='1.0'\nencoding='no'?><a/>", false),
       "2:14: Unsupported encoding no"},
      {"\xEF\xBB\xBF<?xml version='1.0' encoding='no'?><a/>", "1:34: Unsupported encoding no"},
      {"<?xml version='1.0' encoding='UCS-4'?><a/>",
       "1:37: Document labelled UCS-4 but has UTF-8 content"},
      {"<?xml version='1.0' encoding='ascii'?>\n<a>\xE4</a>",
       "2:4: input conversion failed due to input error, bytes 0xE4 0x3C 0x2F 0x61"},
      {"<?xml version='1.0' encoding='euc-kr'?><a>\xB0\xA1" + std::string(9000, ' ') + "\xFF</a>",
       "1:9044: input conversion failed due to input error, bytes 0xFF 0x3C 0x2F 0x61"},
      // A byte order mark is in no column, but a U+FEFF in the text is.
      {"\xFE\xFF" + utf16(u"<a>\xDC00</a>", true),
       "1:4: input conversion failed due to input error, bytes 0xDC 0x00 0x00 0x3C"},
      {"\xFE\xFF" + utf16(u"<a>" + std::u16string(4090, ' ') + u"\uFEFF\xDC00</a>", true),
       "1:4095: input conversion failed due to input error, bytes 0xDC 0x00"},
      {"\xFF\xFE" + utf16(u"<a></b>", false),
       "1:8: Opening and ending tag mismatch: a line 1 and b"},
      {"\xFE\xFF" + utf16(u"<a/>", true) + "x", "1:5: The document is not well-formed"},
      {"\xFE\xFF" + utf16(u"<a b='/>", true) + "x", "1:9: AttValue: ' expected"},
      {"<?xml version='1.0'" + std::string(5000, ' ') + "encoding='latin1'?><a/>",
       "1:1: The declaration is too long"},
  };
  expectRows(cases, [](const std::string& document) { return rejection(document); });
}

TEST(XmlParser, ReadsRegularLocalFilesOnly) {
  const Folder folder;
  const std::string good = folder.write("a.xml", "<a>x</a>");
  ASSERT_EQ(::mkfifo(folder.path("fifo").c_str(), 0600), 0);
  const std::string gzip("\x1F\x8B\x08\x00\x00\x00\x00\x00\x00\x03\xB3\x49\xD4\xB7\x03\x00", 16);
  const Row cases[] = {
      {good, "accepted"},
      {folder.path("none"), "0:0: Cannot open the file: there is no such file"},
      {"", "0:0: Cannot open the file: there is no such file"},
      {"file://" + good, "0:0: Cannot open the file: there is no such file"},
      {"http://127.0.0.1/a.xml", "0:0: Cannot open the file: there is no such file"},
      {folder.path(""), "0:0: Cannot read the file: it is not a regular file"},
      {folder.path("fifo"), "0:0: Cannot read the file: it is not a regular file"},
      {"/dev/null", "0:0: Cannot read the file: it is not a regular file"},
      {"/dev/zero", "0:0: Cannot read the file: it is not a regular file"},
      {"/proc/self/status", "1:1: Start tag expected, '<' not found"},
      {"/proc/self/mem", "0:0: Cannot read the file: error 5"},
      {folder.write("empty", ""), "1:1: Document is empty"},
      {folder.write("a.xml.gz", gzip), "1:1: Start tag expected, '<' not found"},
  };
  const auto descriptors = [] {
    const std::filesystem::directory_iterator open("/proc/self/fd");
    return std::distance(begin(open), end(open));
  };
  const auto before = descriptors();
  expectRows(cases, [](const std::string& path) { return fileRejection(path); });
  EXPECT_EQ(descriptors(), before);
  EXPECT_EQ(rejectionBy<ParseException>([] { (void)XmlParserLibXml().parse(nullptr, nullptr); }),
            "0:0: There is no path");
  EXPECT_EQ(fileRejection(good, "no-such"), "0:0: Unknown encoding: no-such");
  const auto workingDirectory = std::filesystem::current_path();
  std::filesystem::current_path(folder.path(""));
  EXPECT_EQ(fileRejection("-"), "0:0: Cannot open the file: there is no such file");
  (void)folder.write("-", "<a/>");
  EXPECT_EQ(fileRejection("-"), "accepted");
  std::filesystem::current_path(workingDirectory);
}

TEST(XmlParser, MakesTheSameTreeOfALongBufferAndAFile) {
  const std::string item = "<b c='1'>t\xC3\xA4&amp;&e;</b><!--x-->\n";
  const std::string document =
      "<!DOCTYPE a [<!ENTITY e '<i/>'>]><a>" + repeated(item, 10000) + "</a>";
  const Folder folder;
  const auto file = XmlParserLibXml().parse(folder.write("a.xml", document).c_str(), nullptr);
  const auto buffer = parse(document);
  const std::string want = "a[" + repeated("b['t\xC3\xA4&'i[]]!'\n'", 10000) + "]";
  EXPECT_EQ(outline(buffer->getDocumentElement().get()), want);
  EXPECT_EQ(outline(file->getDocumentElement().get()), want);
  EXPECT_EQ(fileRejection(folder.write("b.xml", document + "x")),
            "10001:5: Extra content at the end of the document");
}

/// What a host may have set up in libxml2, and what it hears.
struct Host {
  static inline int calls = 0;
  template <typename Error>  // const or not, by libxml2's version
  static void structured(void* /*data*/, Error* /*error*/) {
    ++calls;
  }
  static void generic(void* /*data*/, const char* /*message*/, ...) { ++calls; }
  static xmlParserInput* load(const char* /*url*/, const char* /*id*/, xmlParserCtxt* /*context*/) {
    ++calls;
    return nullptr;
  }
};

TEST(XmlParser, LeavesAHostsLibxml2AloneAndStandardErrorEmpty) {
  const std::string documents[] = {
      "<a>",
      "<p:a/>",
      "<a>\xFF</a>",
      "\xFF\xFE" + utf16(u"<a>\xD800</a>", false),
      "<!DOCTYPE a [<!ENTITY lt 'x'><!ENTITY % p SYSTEM 'p'>%p;<!ENTITY e SYSTEM 'e'>"
      "<!NOTATION n SYSTEM 'n'><!ENTITY u SYSTEM 'u' NDATA n><!ATTLIST a b (x|x) 'y'>]>"
      "<a c='&e;'>&e;&u;</a>",
      "<!DOCTYPE a PUBLIC '-//x//y' 'http://127.0.0.1/x'><a>&e;</a>",
      "<?oasis-xml-catalog catalog='/x'?><?xml-stylesheet href='x'?><a/>",
      "<?xml version='1.0' encoding='no-such'?><a/>",
      "<a xmlns='%zz' xml:space='x'/>",
      "<?xml version='7'?><a/>",
      "<!DOCTYPE a [<!ELEMENT a (b|(c,d)*)*>]><a/>"};
  const auto parseAll = [&] {
    for (const std::string& document : documents) {
      (void)rejection(document);
    }
    (void)rejection("<a/>", "no-such");
    (void)fileRejection("none");
  };

  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  parseAll();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(xmlGetLastError(), nullptr);

  int context = 0;
  const xmlExternalEntityLoader loader = xmlGetExternalEntityLoader();
  xmlSetExternalEntityLoader(Host::load);
  const xmlStructuredErrorFunc structured = Host::structured;
  xmlSetStructuredErrorFunc(&context, structured);
  xmlSetGenericErrorFunc(&context, Host::generic);
  const int keepBlanks = xmlKeepBlanksDefault(0);
  (void)xmlParseMemory("<host>", 6);
  const int callsBefore = Host::calls;
  ASSERT_NE(xmlGetLastError(), nullptr);
  const std::string lastError = xmlGetLastError()->message;
  parseAll();
  EXPECT_EQ(outline("<a> <b/> </a>"), "a[' 'b[]' ']");
  EXPECT_EQ(Host::calls, callsBefore);
  EXPECT_EQ(xmlGetExternalEntityLoader(), &Host::load);
  EXPECT_EQ(xmlStructuredError, structured);
  EXPECT_EQ(xmlStructuredErrorContext, &context);
  EXPECT_EQ(xmlGenericError, &Host::generic);
  ASSERT_NE(xmlGetLastError(), nullptr);
  EXPECT_EQ(xmlGetLastError()->message, lastError);
  xmlKeepBlanksDefault(keepBlanks);
  xmlSetGenericErrorFunc(nullptr, nullptr);
  xmlSetStructuredErrorFunc(nullptr, nullptr);
  xmlSetExternalEntityLoader(loader);
  xmlResetLastError();

  xmlCleanupParser();
  EXPECT_EQ(outline("<a/>"), "a[]");
}

}  // namespace
}  // namespace orvane::nimbrel::util::test
