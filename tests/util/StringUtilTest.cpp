#include "tests/support/Checks.h"
#include "util/StringUtil.h"

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
  const struct {
    const char* text;
    const char* trimmed;
    const char* squeezed;
    const char* both;
  } cases[] = {
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
      {"\xC2\xA0 x\x85\xA0", "\xC2\xA0 x\x85\xA0", "\xC2\xA0 x\x85\xA0", "\xC2\xA0 x\x85\xA0"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    std::string text = c.text;
    StringUtil::trim(text);
    EXPECT_EQ(text, c.trimmed);
    text = c.text;
    StringUtil::squeeze(text);
    EXPECT_EQ(text, c.squeezed);
    EXPECT_EQ(StringUtil::squeezeAndTrim(c.text), c.both);
  }
}

TEST(StringUtil, SplitsIntoAllPieces) {
  EXPECT_THAT(StringUtil::split("", ' '), IsEmpty());
  EXPECT_THAT(StringUtil::split("a", ' '), ElementsAre("a"));
  EXPECT_THAT(StringUtil::split(" ", ' '), ElementsAre("", ""));
  EXPECT_THAT(StringUtil::split(",a,,b c,", ','), ElementsAre("", "a", "", "b c", ""));
}

}  // namespace
