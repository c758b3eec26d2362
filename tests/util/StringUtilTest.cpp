#include <array>

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

}  // namespace
