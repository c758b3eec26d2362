#include "tests/support/Checks.h"
#include "util/IDNConverter.h"

namespace {

using orvane::nimbrel::test::repeated;
using orvane::nimbrel::util::IDNConverter;

std::string convert(const std::string& host) {
  std::string out = "untouched";
  if (!IDNConverter().tryConvertToASCII(host.c_str(), out)) {
    EXPECT_EQ(out, "untouched");
    return "rejected";
  }
  return out;
}

TEST(IDNConverter, GivesTheAsciiForm) {
  orvane::nimbrel::test::expectRows(
      "example.org => example.org  EXAMPLE.Org.Zz => example.org.zz  EXAMPLE.Org. => example.org.  "
      "127.0.0.1 => 127.0.0.1  -a_b-.x--y => -a_b-.x--y  [::1] => [::1]  "
      "[ABCD::1.2.3.4] => [ABCD::1.2.3.4]  [V1.A] => [V1.A]  %45x%61mple%2Eorg => example.org  "
      "B\u00FCcher.Example => xn--bcher-kva.example  a\u00AD.b => a.b  \uFF37\uFF37.a => ww.a  "
      "bu\u0308cher.example => xn--bcher-kva.example  "
      "b%C3%BCcher.example. => xn--bcher-kva.example.  b%c3%bccher.%4a => xn--bcher-kva.j  "
      "xn--bcher-kva.b\u00FCcher => xn--bcher-kva.xn--bcher-kva  a_b.\u00FC => a_b.xn--tda  "
      "\u4F8B\u3048\u3002\u30C6\u30B9\u30C8 => xn--r8jz45g.xn--zckzah  "
      "\u05D0\u05D1.example => xn--4dbc.example  fa\u00DF.de => xn--fa-hia.de",  // not "fass"
      convert);
}

TEST(IDNConverter, RejectsWhatIsNoHostName) {
  for (const std::string host :
       {"", ".", "..", ".a", "a..b", "a..", "*", "*.a", "a b", "a/b", "a:80", "a@b", "a\x7F",
        "a\x01", "a,b", "a~b", "%", "%4", "%4g", "a%", "%00", "%20", "%2A", "%2541", "[", "]", "[]",
        "[x]", "[::1", "::1", "[::1].a", "[%3A%3A1]", "%5B::1%5D", "[\u00FC]",
        // The same beside a label that is not ASCII, and where a mapping makes such characters.
        "*.b\u00FCcher", "b\u00FC cher", "b\u00FC/cher", "b\u00FCcher..a", ".b\u00FCcher",
        "b\u00FC%00", "b\u00FC%", "\u2100.b", "\uFF0A.b", "\uFF05x.b", "\u3002", "\u00AD",
        // No UTF-8, and what the rules for international names reject.
        "\x80.a", "b%FCcher", "%C3", "\xED\xA0\x80", "\xC1\xA1\u00FC", "\uFFFD", "\uE000.a",
        "-\u00FC", "\u00FC-", "ab--\u00FC", "\u0301a.b", "xn--\u00FC", "xn--0.\u00FC", "a\u05D0.b",
        "\u05D0a", "a\u200Db", "a\u200Cb"}) {
    SCOPED_TRACE(testing::PrintToString(host));
    EXPECT_EQ(convert(host), "rejected");
  }
  std::string out = "untouched";
  EXPECT_FALSE(IDNConverter().tryConvertToASCII(nullptr, out));
  EXPECT_EQ(out, "untouched");
}

TEST(IDNConverter, KeepsTheLimitsOfLength) {
  const std::string label(63, 'a');
  EXPECT_EQ(convert(label), label);
  EXPECT_EQ(convert(label + "a"), "rejected");
  EXPECT_EQ(convert(label + ".\u00FC"), label + ".xn--tda");
  EXPECT_EQ(convert(label + "a.\u00FC"), "rejected");

  const std::string name = label + "." + label + "." + label + "." + std::string(61, 'b');
  EXPECT_EQ(convert(name), name);
  EXPECT_EQ(convert(name + "."), name + ".");
  EXPECT_EQ(convert(name + "b"), "rejected");
  EXPECT_EQ(convert(name + "b."), "rejected");
  const std::string front = name.substr(0, 245);
  EXPECT_EQ(convert(front + ".\u00FC"), front + ".xn--tda");
  EXPECT_EQ(convert(front + ".\u00FC."), front + ".xn--tda.");
  EXPECT_EQ(convert(front + "b.\u00FC"), "rejected");
}

TEST(IDNConverter, IsNotSlowedDownByHugeNames) {
  constexpr std::size_t MANY = 1 << 20;
  EXPECT_EQ(convert(repeated("%C3%BC", MANY)), "rejected");
  EXPECT_EQ(convert(repeated("a.", MANY)), "rejected");
  // Marks that have to change places would keep ICU busy for minutes.
  EXPECT_EQ(convert("a" + repeated("\u0301", MANY) + repeated("\u0323", MANY)), "rejected");
  // The most input that is worth a look: letters of several code points each.
  const std::string label = repeated("\U0001D6C2\u0313\u0300", 55) + ".";
  EXPECT_EQ(convert(repeated(label, 4) + "a").substr(0, 4), "xn--");
}

TEST(IDNConverter, ReadsAHostThatLiesInTheResult) {
  std::string text = "A-HOST-THAT-IS-TOO-LONG-TO-BE-STORED-IN-PLACE";
  EXPECT_TRUE(IDNConverter().tryConvertToASCII(text.c_str() + 2, text));
  EXPECT_EQ(text, "host-that-is-too-long-to-be-stored-in-place");
  text = "[::1]";
  EXPECT_TRUE(IDNConverter().tryConvertToASCII(text.c_str(), text));
  EXPECT_EQ(text, "[::1]");
}

}  // namespace
