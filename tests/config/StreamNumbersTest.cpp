#include <cstring>
#include <locale>
#include <random>
#include <sstream>

#include "config/StreamNumbers.h"
#include "tests/support/Checks.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::config::detail {
namespace {

template <typename Number>
Number byStream(const std::string& text, Number start) {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  stream >> start;
  return start;
}

template <typename Number>
bool sameBits(Number a, Number b) {
  return std::memcmp(&a, &b, sizeof(Number)) == 0;
}

void expectAsStream(const std::string& text) {
  SCOPED_TRACE("\"" + text + "\"");
  EXPECT_EQ(extractInt(text, -1), byStream(text, -1));
  EXPECT_PRED2(sameBits<float>, extractFloat(text, 0.5F), byStream(text, 0.5F));
  EXPECT_PRED2(sameBits<double>, extractDouble(text, 0.5), byStream(text, 0.5));
}

TEST(StreamNumbers, ReadWhatAStreamReads) {
  for (const char* text : {"", " \t\n\v\f\r", " 12", "- 5", "1 2", "\xC2\xA0"}) {
    expectAsStream(text);
  }
  const std::string texts =
      "abc 12abc +5 -5 - +-5 0x10 .5 5. 1,5 1e 1e+ 1e2 1e2e3 1.5.5 inf nan -inf infinity 007 1E5 "
      "2147483647 2147483648 -2147483648 -2147483649 1e38 4e38 -4e38 1e308 2e308 -2e308 1e-46 "
      "1e-400 -1e-400 -0 -0.0 3.4028236e38 1.17549429e-38 5e-324 1e99999 0e99999 1'000 1_000 0b1 "
      "0x1p3 e5 .e5 . -. +. +.5 ..5";
  for (const std::string& text : zel::util::StringUtil::split(texts, ' ')) {
    expectAsStream(text);
  }
  const std::string nines(400, '9');
  const std::string zeros(400, '0');
  for (const std::string& text : {nines, "-" + nines, "0." + nines, nines + "." + nines,
                                  "0." + zeros + "1", zeros + "1", "1e" + nines, "1e-" + nines}) {
    expectAsStream(text);
  }
  EXPECT_EQ(extractInt("", -1), -1);  // nothing is read, so the start stays
  EXPECT_EQ(extractInt("x", -1), 0);
}

TEST(StreamNumbers, ReadWhatAStreamReadsInAnyMixtureOfTheirCharacters) {
  constexpr char CHARACTERS[] = "00123456789..eE+-  ,x\tinfa";
  std::mt19937 random(20240229);  // NOLINT(cert-msc51-cpp): the same texts in every run
  std::uniform_int_distribution<std::size_t> length(0, 12);
  std::uniform_int_distribution<std::size_t> index(0, sizeof CHARACTERS - 2);
  for (int i = 0; i < 60000 && !testing::Test::HasFailure(); ++i) {
    std::string text(length(random), ' ');
    for (char& c : text) {
      c = CHARACTERS[index(random)];
    }
    expectAsStream(text);
  }
}

}  // namespace
}  // namespace orvane::nimbrel::config::detail
