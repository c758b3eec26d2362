#include "tests/support/Checks.h"
#include "util/LocalizableString.h"
#include "util/UnicodeUtilICU.h"

namespace {

using namespace orvane::nimbrel::util;
using Runs = std::vector<std::string>;

const std::string LONG = "a text that is too long to be stored in place";

LocalizableString make(const Runs& texts,
                       std::shared_ptr<UnicodeUtil> unicode = std::make_shared<UnicodeUtilICU>()) {
  LocalizableString string(std::move(unicode), LocalizableString::LTR, "en");
  for (const std::string& text : texts) {
    string.append(text);
  }
  return string;
}

Runs textsOf(const LocalizableString& string) {
  Runs texts;
  std::string all;
  for (const auto& run : string.getTextNodes()) {
    texts.push_back(run.text);
    all += run.text;
  }
  EXPECT_EQ(string.c_str(), all);
  EXPECT_EQ(string.empty(), all.empty());
  return texts;
}

/// Gives up at a given character, as a host's service might.
struct FailingUnicodeUtil : UnicodeUtil {
  bool isWhiteSpace(char32_t codePoint) const override {
    if (codePoint == U'\u00E9') {
      throw std::bad_alloc();
    }
    return codePoint == U'\u00A0';
  }
};

TEST(UnicodeUtil, KnowsTheWhiteSpaceProperty) {
  const struct : UnicodeUtil {
  } unicode;  // a host's, which overrides nothing
  // Spaces of all kinds are in; joiners, the mark of byte order and what is no character are out.
  for (const char32_t in : {0x85U, 0xA0U, 0x1680U, 0x2000U, 0x200AU, 0x2028U, 0x202FU, 0x3000U}) {
    EXPECT_TRUE(unicode.isWhiteSpace(in)) << std::hex << static_cast<unsigned>(in);
  }
  for (const char32_t out :
       {0x84U, 0x180EU, 0x200BU, 0x2060U, 0xD800U, 0xFEFFU, 0x110000U, 0x80000020U, 0xFFFFFFFFU}) {
    EXPECT_FALSE(unicode.isWhiteSpace(out)) << std::hex << static_cast<unsigned>(out);
  }
}

TEST(LocalizableString, NeedsAUnicodeService) {
  EXPECT_EQ(orvane::nimbrel::test::thrownBy<std::invalid_argument>(
                [] { LocalizableString(nullptr, LocalizableString::LTR, ""); }),
            "unicodeUtil cannot be NULL");
}

TEST(LocalizableString, GivesRunsTheirOwnOrThePresentTagAndDirection) {
  LocalizableString string = make({"one"});
  string.setDirection(LocalizableString::RLO);
  string.setLanguageTag("he");
  string.append("");
  string.append("", LocalizableString::RTL, "fr");
  string.append("two");
  string.append("three", LocalizableString::LRO, "fr");
  const std::string four = "four";
  string.append(four, LocalizableString::RTL, "ar");
  string.append({{"", LocalizableString::LRO, "fr"}, {LONG, LocalizableString::LTR, ""}});
  string.append({{"", LocalizableString::LRO, "fr"}});

  EXPECT_EQ(textsOf(string), Runs({"one", "two", "three", "four", LONG}));
  using Text = LocalizableString;
  const std::pair<Text::Direction, std::string> expected[] = {
      {Text::LTR, "en"}, {Text::RLO, "he"}, {Text::LRO, "fr"}, {Text::RTL, "ar"}, {Text::LTR, ""}};
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    const auto& run = string.getTextNodes()[i];
    EXPECT_EQ(std::make_pair(run.direction, run.languageTag), expected[i]);
  }
  EXPECT_EQ(std::make_pair(string.getDirection(), std::string(string.getLanguageTag())),
            expected[1]);
}

TEST(LocalizableString, AppendsItselfAndItsOwnParts) {
  for (const Runs& texts : {Runs{}, Runs{"a"}, Runs{LONG}, Runs{"a", LONG, "b"}}) {
    SCOPED_TRACE(texts.size());
    LocalizableString string = make(texts);
    Runs expected = texts;
    for (int i = 0; i < 3; ++i) {
      string.append(string);
      const Runs before = expected;
      expected.insert(expected.end(), before.begin(), before.end());
      EXPECT_EQ(textsOf(string), expected);
    }
    if (!string.empty()) {
      for (int i = 0; i < 5; ++i) {
        const auto& run = string.getTextNodes().front();
        string.append(run.text, run.direction, run.languageTag);
        expected.push_back(texts.front());
      }
      string.setLanguageTag(string.getTextNodes().back().languageTag);
      EXPECT_EQ(textsOf(string), expected);
      EXPECT_EQ(string.getTextNodes().back().languageTag, "en");
    }
  }
}

TEST(LocalizableString, CopiesAreIndependentAndMovedOnesUsable) {
  for (const Runs& texts : {Runs{}, Runs{LONG}, Runs{"a", LONG}}) {
    SCOPED_TRACE(texts.size());
    LocalizableString source = make(texts);
    LocalizableString copy = source;
    copy.append("x");
    EXPECT_EQ(textsOf(source), texts);
    copy = source;
    EXPECT_EQ(textsOf(copy), texts);
    const LocalizableString& same = copy;
    copy = same;
    EXPECT_EQ(textsOf(copy), texts);

    LocalizableString moved = std::move(source);
    EXPECT_EQ(textsOf(moved), texts);
    EXPECT_EQ(textsOf(source), Runs());  // NOLINT(bugprone-use-after-move): empty is promised.
    for (const char* text : {"\u3000b", "\u3000"}) {
      source.append(text);
    }
    source.normalizeWhitespace();
    EXPECT_EQ(textsOf(source), Runs({" b", " "}));

    source = std::move(moved);
    EXPECT_EQ(textsOf(source), texts);
    textsOf(moved);  // NOLINT(bugprone-use-after-move): valid, though of unspecified content
    moved.append("c");
    moved.trim();
    EXPECT_FALSE(moved.empty());
  }
  static_assert(std::is_nothrow_move_constructible_v<LocalizableString>);
  static_assert(std::is_nothrow_move_assignable_v<LocalizableString>);
}

TEST(LocalizableString, NormalizesAndTrimsAcrossRuns) {
  const struct {
    Runs texts, normalized, trimmed;
  } cases[] = {
      {{}, {}, {}},
      {{" "}, {" "}, {}},
      {{" \n", "\t", "\u3000"}, {" "}, {}},
      {{"a b"}, {"a b"}, {"a b"}},
      {{"a", "b"}, {"a", "b"}, {"a", "b"}},
      {{"a\tb"}, {"a b"}, {"a\tb"}},
      {{" a\u00A0\u2003b \n"}, {" a b "}, {"a\u00A0\u2003b"}},
      {{"\u200Ba\u00A0"}, {"\u200Ba "}, {"\u200Ba"}},
      {{"a ", " b"}, {"a ", "b"}, {"a ", " b"}},
      {{"a", " \n", " b"}, {"a", " ", "b"}, {"a", " \n", " b"}},
      {{"a\n", "\u2028", "\r\n", "b"}, {"a ", "b"}, {"a\n", "\u2028", "\r\n", "b"}},
      {{"\u1680", " ", "a", "b ", "\u0085"}, {" ", "a", "b "}, {"a", "b"}},
      {{"  ", " a\u3000", "\t"}, {" ", "a "}, {"a"}},
      {{"a", "  "}, {"a", " "}, {"a"}},
      // Bytes that are no UTF-8 are kept and end white space, also where a run cuts a character.
      {{"\x85", " \xA0"}, {"\x85", " \xA0"}, {"\x85", " \xA0"}},
      {{" \xC2\x85\x85  "}, {" \x85 "}, {"\x85"}},
      {{"\xE3\x80", "\x80 "}, {"\xE3\x80", "\x80 "}, {"\xE3\x80", "\x80"}},
      {{"\xC0\xA0", "\xE0\x82\xA0\xED\xA0\x80\xF4\x90\x80\x80"},
       {"\xC0\xA0", "\xE0\x82\xA0\xED\xA0\x80\xF4\x90\x80\x80"},
       {"\xC0\xA0", "\xE0\x82\xA0\xED\xA0\x80\xF4\x90\x80\x80"}},
      {{"\xE2\xC2\xA0 ", "\xF0\x80 "}, {"\xE2 ", "\xF0\x80 "}, {"\xE2\xC2\xA0 ", "\xF0\x80"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.texts));
    LocalizableString string = make(c.texts);
    string.normalizeWhitespace();
    EXPECT_EQ(textsOf(string), c.normalized);
    string = make(c.texts);
    string.trim();
    EXPECT_EQ(textsOf(string), c.trimmed);
  }
}

TEST(LocalizableString, RebuildsNothingWhenNothingChanges) {
  for (const Runs& texts : {Runs{LONG}, Runs{"a ", "\u00E9 " + LONG}}) {
    LocalizableString string = make(texts);
    const char* text = string.c_str();
    const auto* runs = string.getTextNodes().data();
    string.normalizeWhitespace();
    string.trim();
    EXPECT_EQ(string.c_str(), text);
    EXPECT_EQ(string.getTextNodes().data(), runs);
  }
}

TEST(LocalizableString, ChangesNothingWhenTheServiceFails) {
  const Runs texts = {" \t", " a\u00A0\u00A0b", "\u00E9", " \n"};
  LocalizableString string = make(texts, std::make_shared<FailingUnicodeUtil>());
  EXPECT_THROW(string.normalizeWhitespace(), std::bad_alloc);
  EXPECT_EQ(textsOf(string), texts);
  LocalizableString ends = make({" \u00E9", " "}, std::make_shared<FailingUnicodeUtil>());
  EXPECT_THROW(ends.trim(), std::bad_alloc);
  EXPECT_EQ(textsOf(ends), Runs({" \u00E9", " "}));
}

TEST(LocalizableString, TakesManyRuns) {
  LocalizableString string = make({});
  for (int i = 0; i < 200000; ++i) {
    string.append("ab");
  }
  EXPECT_EQ(textsOf(string).size(), 200000U);
}

}  // namespace
