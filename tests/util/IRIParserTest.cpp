#include "tests/support/Checks.h"
#include "util/IRIParser.h"
#include "util/StringUtil.h"

namespace {

using namespace orvane::nimbrel::util;
using orvane::nimbrel::test::expectRows;
using orvane::zel::util::StringUtil;

/// Parses from a buffer of the exact size, so that a sanitizer sees an over-read.
bool parse(const std::string& text, Option<IRI>& out) {
  const auto exact = std::make_unique<char[]>(text.size() + 1);
  text.copy(exact.get(), text.size());
  return IRIParser().tryParse(exact.get(), out);
}

bool accepts(const std::string& text) {
  Option<IRI> out;
  return parse(text, out);
}

/// All components in one line; an absent one is "-".
std::string describe(const std::string& text) {
  Option<IRI> out;
  if (!parse(text, out)) {
    return "rejected";
  }
  const IRI& iri = out.get();
  const auto part = [](bool present, const std::string& value) {
    EXPECT_TRUE(present || value.empty());
    return present ? " <" + value + ">" : " -";
  };
  return iri.scheme + part(iri.hasUserInfo, iri.userInfo) + part(iri.hasHost, iri.host) + " " +
         std::to_string(iri.port) + part(iri.hasPath, iri.path) + part(iri.hasQuery, iri.query) +
         part(iri.hasFragment, iri.fragment);
}

TEST(IRIParser, TellsTheComponentsApart) {
  // scheme, user, host, port, path, query, fragment
  expectRows(
      R"(https://user@h.org:8443/a/b?q=1#top => https <user> <h.org> 8443 </a/b> <q=1> <top>
HTTP://Example.ORG => HTTP - <Example.ORG> -1 - - -  http://h/ => http - <h> -1 </> - -
http://h? => http - <h> -1 - <> -  http://h#a?b => http - <h> -1 - - <a?b>
file:///a//b => file - <> -1 </a//b> - -  x://@: => x <> <> -1 - - -
x://a:b:c@h:1 => x <a:b:c> <h> 1 - - -  x://u%40@[::1]:80/ => x <u%40> <[::1]> 80 </> - -
a+-.1: => a+-.1 - - -1 - - -  a:b:c@d//e => a - - -1 <b:c@d//e> - -
a:/b => a - - -1 </b> - -  a:?b?/c#d/ => a - - -1 - <b?/c> <d/>
a:%2F..%2f/. => a - - -1 <%2F..%2f/.> - -  x://h: => x - <h> -1 - - -
a:-._~!$&'()*+,;=:@ => a - - -1 <-._~!$&'()*+,;=:@> - -  x://h:0 => x - <h> 0 - - -
x://-._~!$&'()*+,;= => x - <-._~!$&'()*+,;=> -1 - - -
x://h:00000000000000000000065535 => x - <h> 65535 - - -)",
      describe);
  EXPECT_EQ(describe("http://b\u00FCcher.example/\u8DEF?\uE000#\u8DEF"),
            "http - <b\u00FCcher.example> -1 </\u8DEF> <\uE000> <\u8DEF>");
}

TEST(IRIParser, RejectsWhatTheProductionHasNoPlaceFor) {
  for (const std::string& text : StringUtil::split(
           ": /a //h a a/b:c 1a:b +a:b a_b:c \u00E9:b ?a:b "
           "x://a@b@c x://a[::1] x://[::1]@h x://[::1 x://::1] x://[::1]x x://[::1]:8x x://[] "
           "x://h:1:2 x://h:1@b:c:d@e x://u@h:1a x://h:-1 x://h:+1 x://h:65536 x://h:%31 "
           "x://h:99999999999999999999 x://h:\u0661 a:b\\c a:< a:> a:\" a:{ a:} a:| a:^ a:` a:[ "
           "a:] a:?[ a:#[ a:#b#c a:\x7F a:\x01 a:\t a:\n "
           "a:% a:%4 a:%4g a:%g4 a:%%41 a:?% a:#%4 x://%/ x://%4@h a:%4\u00E9",
           ' ')) {
    SCOPED_TRACE(text);
    EXPECT_EQ(describe(text), "rejected");
  }
  for (const char* text : {"", " a:b", "a:b ", "a: b", "x://a b"}) {
    EXPECT_EQ(describe(text), "rejected") << text;
  }
}

TEST(IRIParser, KnowsTheCharactersBeyondAscii) {
  const struct {
    bool anywhere, inQuery;
    const char* characters;
  } cases[] = {
      {true, true,
       "\u00A0 \u200E \u202E \uD7FF \uF900 \uFDCF \uFDF0 \uFFEF \U00010000 \U0001FFFD \U00020000 "
       "\U000DFFFD \U000E1000 \U000EFFFD"},
      {false, true, "\uE000 \uF8FF \U000F0000 \U000FFFFD \U00100000 \U0010FFFD"},
      {false, false,
       "\u0080 \u009F \uFDD0 \uFDEF \uFFF0 \uFFFD \U0001FFFE \U000DFFFF \U000E0000 \U000E0FFF "
       "\U000EFFFE \U000FFFFE \U0010FFFE"},
      // No UTF-8: lone, cut off, overlong, surrogates, above the last.
      {false, false,
       "\x80 \xC3 \xE8\xB7 \xE8(\xAF \xC1\xBF \xE0\x83\xBC \xF0\x88\xB7\xAF \xED\xA0\x80 "
       "\xED\xB0\x80 \xED\xBF\xBF \xF4\x90\x80\x80 \xF8\x88\x80\x80\x80 \xFF"},
  };
  for (const auto& c : cases) {
    for (const std::string& character : StringUtil::split(c.characters, ' ')) {
      SCOPED_TRACE(testing::PrintToString(character));
      EXPECT_EQ(accepts("a:" + character), c.anywhere);
      EXPECT_EQ(accepts("a:#" + character), c.anywhere);
      EXPECT_EQ(accepts("a://" + character), c.anywhere);
      EXPECT_EQ(accepts("a://" + character + "@"), c.anywhere);
      EXPECT_EQ(accepts("a:?" + character), c.inQuery);
    }
  }
}

TEST(IRIParser, KnowsIpLiterals) {
  for (const std::string& address : StringUtil::split(
           ":: ::1 1:: 1::8 1:2:3:4:5:6:7:8 1:2:3:4:5:6:7:: ::2:3:4:5:6:7:8 1:2:3::5:6:7:8 "
           "ABCD:ef01::fFfF 0000:: ::1.2.3.4 1:2:3:4:5:6:1.2.3.4 1:2:3:4:5::1.2.3.4 "
           "::2:3:4:5:6:1.2.3.4 ::0.10.199.255 v1.x VaF.a:b!~",
           ' ')) {
    SCOPED_TRACE(address);
    EXPECT_EQ(describe("x://[" + address + "]"), "x - <[" + address + "]> -1 - - -");
  }
  for (const std::string& address : StringUtil::split(
           " : 1 ::: :1 1: 1:2 1:::2 ::1: 1::2::3 1:2:3:4:5:6:7 1:2:3:4:5:6:7: 1:2:3:4:5:6:7:8:9 "
           "1:2:3:4:5:6:7:8: 1:2:3:4:5:6:7:8:: ::1:2:3:4:5:6:7:8 1::2:3:4:5:6:7:8 00000:: g:: "
           "1.2.3.4 1.2.3.4:: ::1.2.3.4:5 ::1.2.3 ::1.2.3. ::1.2.3.4. ::1.2.3.4.5 ::.1.2.3 "
           "::1..2.3 ::1.2.3.256 ::1.2.3.04 ::1.2.3.1000 ::1.2.3.a ::a.2.3.4 "
           "1:2:3:4:5:6:7:1.2.3.4 1:2:3:4:5:6::1.2.3.4 1:2:3:4:5:1.2.3.4 fe80::1%25e0 fe80::1%e0 "
           "v.x v1. v1 v vg.x v1.[ v1.%41 v1.\u00E9 1.x",
           ' ')) {
    SCOPED_TRACE(address);
    EXPECT_EQ(describe("x://[" + address + "]"), "rejected");
  }
}

TEST(IRIParser, TouchesTheResultOnlyWhenItSucceeds) {
  Option<IRI> out;
  EXPECT_FALSE(IRIParser().tryParse(nullptr, out));
  EXPECT_FALSE(IRIParser().tryParse("no iri", out));
  EXPECT_FALSE(out);

  ASSERT_TRUE(IRIParser().tryParse("a:b://a-host-that-is-too-long-to-be-in-place?q#f", out));
  EXPECT_FALSE(IRIParser().tryParse(nullptr, out));
  EXPECT_FALSE(IRIParser().tryParse("x://h:65536", out));
  EXPECT_EQ(out.get().path, "b://a-host-that-is-too-long-to-be-in-place");
  EXPECT_TRUE(out.get().hasQuery);

  ASSERT_TRUE(IRIParser().tryParse(out.get().path.c_str(), out));
  EXPECT_EQ(out.get().host, "a-host-that-is-too-long-to-be-in-place");
  EXPECT_FALSE(out.get().hasQuery);
}

TEST(IRIParser, TakesTimeInProportionToTheText) {
  const auto expect = [](bool isAccepted, const auto& make) {
    orvane::nimbrel::test::expectCostInProportion(
        std::size_t{1} << 17, make,
        [&](const std::string& text) { EXPECT_EQ(accepts(text), isAccepted); });
  };
  const auto behind = [](const char* begin, char repeated, const char* end = "") {
    return [=](std::size_t count) { return begin + std::string(count, repeated) + end; };
  };
  expect(true, [](std::size_t count) {
    const std::string letters(count, 'a');
    return letters + "://" + letters + "@" + letters + "/" + letters;
  });
  expect(true, behind("x://h:", '0'));
  expect(true, behind("x:?", '?'));
  expect(false, behind("x://", '['));
  expect(false, behind("x://", '@'));
  expect(false, behind("x://[", '1', "]"));
}

}  // namespace
