#include <gmock/gmock.h>

#include <array>

#include "tests/support/Checks.h"
#include "util/StringUtil.h"
#include "util/Utf8.h"

namespace {

using orvane::zel::util::StringUtil;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(StringUtil, KnowsSixWhiteSpaceBytesAndNoOther) {
  std::string found;
  for (int byte = 0; byte < 256; ++byte) {
    if (StringUtil::isSpace(static_cast<char>(byte))) {
      found.push_back(static_cast<char>(byte));
    }
  }
  EXPECT_EQ(found, "\t\n\v\f\r ");
}

TEST(StringUtil, TrimsAndSqueezes) {
  // text, trimmed, squeezed, both
  const std::array<const char*, 4> cases[] = {
      {"", "", "", ""},
      {"a", "a", "a", "a"},
      {" ", "", " ", ""},
      {"\t", "", " ", ""},
      {" \v\f ", "", " ", ""},
      {"a b", "a b", "a b", "a b"},
      {"a\tb", "a\tb", "a b", "a b"},
      {"a  b", "a  b", "a b", "a b"},
      {" a b ", "a b", " a b ", "a b"},
      {"a \n", "a", "a ", "a"},
      {"\r\na  \t b \n c  ", "a  \t b \n c", " a b c ", "a b c"},
      {"\xC2\xA0 x\x85\xA0", "\xC2\xA0 x\x85\xA0", "\xC2\xA0 x\x85\xA0", "\xC2\xA0 x\x85\xA0"}};
  for (const auto& [text, trimmed, squeezed, both] : cases) {
    SCOPED_TRACE(text);
    std::string changed = text;
    StringUtil::trim(changed);
    EXPECT_EQ(changed, trimmed);
    changed = text;
    StringUtil::squeeze(changed);
    EXPECT_EQ(changed, squeezed);
    EXPECT_EQ(StringUtil::squeezeAndTrim(text), both);
  }
}

TEST(StringUtil, SplitsIntoAllPieces) {
  EXPECT_THAT(StringUtil::split("", ' '), IsEmpty());
  EXPECT_THAT(StringUtil::split("a", ' '), ElementsAre("a"));
  EXPECT_THAT(StringUtil::split(" ", ' '), ElementsAre("", ""));
  EXPECT_THAT(StringUtil::split(",a,,b c,", ','), ElementsAre("", "a", "", "b c", ""));
}

TEST(Utf8, HasNoSurrogatesAndNothingBeyondUnicode) {
  using namespace orvane::nimbrel::util::internal;
  const struct {
    const char* text;
    char32_t codePoint;
  } cases[] = {{"\xED\x9F\xBF", 0xD7FF},       {"\xED\xA0\x80", NOT_UTF8},
               {"\xED\xAF\xBF", NOT_UTF8},     {"\xED\xB0\x80", NOT_UTF8},
               {"\xED\xBF\xBF", NOT_UTF8},     {"\xEE\x80\x80", 0xE000},
               {"\xF4\x8F\xBF\xBF", 0x10FFFF}, {"\xF4\x90\x80\x80", NOT_UTF8}};
  for (const auto& c : cases) {
    std::size_t at = 0;
    EXPECT_EQ(decodeUtf8(c.text, at), c.codePoint) << testing::PrintToString(c.text);
  }
}

}  // namespace
