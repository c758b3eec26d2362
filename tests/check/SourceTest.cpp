// Lines and columns of a document in every encoding, and the places of its tags.

#include <gmock/gmock.h>

#include "check/Decoder.h"
#include "check/Markup.h"
#include "check/SourceText.h"
#include "tests/check/FindingLines.h"
#include "tests/support/Checks.h"

namespace orvane::nimbrel::check {
namespace {

using namespace std::string_literals;
using test::expectRows;
using test::Row;

/// "line:column/utf16Column@byte" of the first "<" of an element.
std::string placeOfTag(const std::string& document) {
  const SourceText source(document);
  const std::vector<ElementTags> tags = elementsOf(source.text());
  if (tags.empty()) {
    return "-";
  }
  const Position position = source.positionOf(tags.back().start);
  EXPECT_EQ(source.offsetOf(position.line, position.column), tags.back().start);
  return std::to_string(position.line) + ':' + std::to_string(position.column) + '/' +
         std::to_string(position.utf16Column) + '@' + std::to_string(position.byte);
}

/// Each ASCII character as one of `width` bytes, the first or the last of which is its own.
std::string widened(std::string_view text, std::size_t width, bool isBigEndian) {
  std::string wide;
  for (const char c : text) {
    wide += isBigEndian ? std::string(width - 1, '\0') + c : c + std::string(width - 1, '\0');
  }
  return wide;
}

TEST(SourceText, CountsInEveryEncoding) {
  const std::string latin = "<?xml version='1.0' encoding='";
  const Row rows[] = {
      {"<a/>", "1:1/1@0"},
      {"\xEF\xBB\xBF\n<a/>", "2:1/1@4"},
      {"<a>\r\n\xC3\xA9\xF0\x9F\x90\x9F<b/></a>", "2:3/4@11"},
      {latin + "ISO-8859-1'?>\n\xE9<a/>", "2:2/2@45"},
      {latin + "windows-1252'?>\n\x80<a/>", "2:2/2@47"},
      {latin + "Shift_JIS'?>\n\x83\x5C<a/>", "2:2/2@45"},
      {latin + "no-such'?>\n<a/>", "-"},
      {"\xFF\xFE" + widened("<a>\n ", 2, false) + "\x3D\xD8\x1F\xDC"s +
           widened("<b/></a>", 2, false),
       "2:3/4@16"},
      {"\xFE\xFF" + widened("\n<a/>", 2, true), "2:1/1@4"},
      {widened("<?x?><a/>", 2, true), "1:6/6@10"},
      {widened("<?x?><a>\n<b/></a>", 2, false), "2:1/1@18"},
      {widened("<a>\n<b/></a>", 4, true), "2:1/1@16"},
  };
  expectRows(rows, placeOfTag);
}

TEST(SourceText, LinesHaveNoEnds) {
  const SourceText source("a\r\nb\n");
  EXPECT_EQ(source.line(1), "a");
  EXPECT_EQ(source.line(2), "b");
  EXPECT_EQ(source.line(3), "");
  EXPECT_EQ(source.line(4).data(), nullptr);
  EXPECT_EQ(source.line(0).data(), nullptr);
}

TEST(SourceText, FarPlacesAreCountedRight) {
  std::string line = "<a>";
  for (int i = 0; i < 1000; ++i) {
    line += "\xC3\xA9\xF0\x9F\x90\x9F";
  }
  EXPECT_EQ(placeOfTag(line + "<b/></a>"), "1:2004/3004@6003");
}

/// The start tags of a text, each with its attributes: "<w:a b='c' d>"; declarations in brackets.
std::string tagsOf(const std::string& text) {
  std::string all;
  for (const ElementTags& element : elementsOf(text)) {
    const Tag tag = readTag(text, element.start);
    const auto part = [&](Span span) { return text.substr(span.begin, span.end - span.begin); };
    all += (all.empty() ? "" : " ") + part(tag.name);
    for (const TagAttribute& attribute : tag.attributes) {
      all += ' ' + part(attribute.name) + '=' + part(attribute.value);
    }
    for (const TagAttribute& attribute : tag.declarations) {
      all += " [" + part(attribute.name) + '=' + part(attribute.value) + ']';
    }
  }
  return all;
}

TEST(Markup, FindsTagsAndNothingThatLooksLikeThem) {
  const Row rows[] = {
      {"<a><b></b ></a>", "a b"},
      {"<a\n b = \"'>'\"\tc='d'/>", "a b='>' c=d"},
      {"<w:a xmlns:w='u' xmlns='v' w:b=''/>", "w:a w:b= [xmlns:w=u] [xmlns=v]"},
      {"<?xml version='1.0'?><!-- > <b> '--><a><![CDATA[<c>]]><?p <d>?><!----></a>", "a"},
      {"<!DOCTYPE a SYSTEM '>' [<!ENTITY e \"<b>]\"> <!-- ' <c> --> <?p ' ?> %x; <!ELEMENT a ANY>]>"
       "<a>&e;</a>",
       "a"},
      {"<a b='c'd='e'>", "a b=c d=e"},
      // whatever is cut off must not be read beyond
      {"<a", "a"},
      {"<", ""},
      {"<a b", "a"},
      {"<a b=", "a"},
      {"<a b='c", "a b=c"},
      {"<!-- <a>", ""},
      {"<!DOCTYPE a [<!ENTITY", ""},
      {"<!DOCTYPE '", ""},
  };
  expectRows(rows, tagsOf);
}

// What is not well-formed is placed where its token begins, however the document is encoded.
TEST(XmlMistake, HasItsPlaceInEveryEncoding) {
  const struct {
    const char* document;
    const char* place;  // and UTF-16 columns, the bytes of the token
  } rows[] = {
      {"<a>\xF0\x9F\x90\x9F & b</a>", "1:6/7-1:7/8 &"},
      {"<a>\xC3\xA9\n\xF0\x9F\x90\x9F<!-- b</a>", "2:2/3-2:6/7 <!--"},
      {"<a>\r\n</b>", "2:1/1-2:4/4 </b"},
      {"<\xC3\xA9 b='' b=''/>", "1:9/9-1:10/10 b"},
      {"<a b\n/>", "1:4/4-1:5/5 b"},
      {"<a>&\xC3\xA9;</a>", "1:4/4-1:7/7 &\xC3\xA9;"},
  };
  for (const auto& row : rows) {
    for (const char* encoding : {"", "UTF-8", "UTF-16LE", "UTF-16BE", "UTF-32LE"}) {
      SCOPED_TRACE(std::string(row.document) + " in " + encoding);
      const std::string mark = *encoding == '\0' ? "" : "\xEF\xBB\xBF";
      const std::string name = *encoding == '\0' ? "UTF-8" : encoding;
      const auto report = checkDocument(encode(mark + row.document, name).value());
      ASSERT_EQ(report->findings().size(), 1U);
      const Diagnostic& finding = report->findings().front();
      const Place place = report->placeOf(finding);
      std::ostringstream text;
      const auto print = [&](const Position& position) -> std::ostringstream& {
        text << position.line << ':' << position.column << '/' << position.utf16Column;
        return text;
      };
      print(place.begin) << '-';
      print(place.end) << ' '
                       << report->source().text().substr(finding.span.begin,
                                                         finding.span.end - finding.span.begin);
      EXPECT_EQ(text.str(), row.place);
      const std::string bytes =
          report->document().substr(place.begin.byte, place.end.byte - place.begin.byte);
      EXPECT_EQ(encode(std::string(text.str().substr(text.str().find(' ') + 1)), name), bytes);
    }
  }
}

TEST(XmlMistake, IsFoundInTheDeclarationOfAnUnknownEncoding) {
  for (const char* mark : {"", "\xEF\xBB\xBF"}) {
    EXPECT_THAT(linesOf(mark + "<?xml version='1.0'\n encoding='caf\xC3\xA9'?><a/>"s),
                testing::ElementsAre(testing::StartsWith("2:2-17 document-rejected")));
    EXPECT_THAT(linesOf(mark + "<?xml version='1.0' encoding='no-such'?><a/>"s),
                testing::ElementsAre(testing::StartsWith("1:31-38 document-rejected")));
  }
}

}  // namespace
}  // namespace orvane::nimbrel::check
