#include "config/ExtractNumber.h"
#include "tests/support/Checks.h"

namespace orvane::nimbrel::config::detail {
namespace {

using namespace test;

template <typename Number>
std::string readOf(const std::string& text) {
  std::ostringstream shown;
  shown << extractNumber(text, Number(-7));
  return shown.str();
}

TEST(ExtractNumber, IntegersEndAtTheirTypesLimit) {
  expectRows(R"(=> -7  x => 0  12abc => 12  +5 => 5  -5 => -5  - => 0  - 5 => 0  +-5 => 0
                0x10 => 0  007 => 7  1.9 => 1  1e5 => 1  1'000 => 1  1,000 => 1
                2147483647 => 2147483647  2147483648 => 2147483647
                -2147483648 => -2147483648  -2147483649 => -2147483648)",
             readOf<int>);
  EXPECT_EQ(readOf<int>("\t\n\v\f\r 8"), "8");
  EXPECT_EQ(readOf<int>(" \n"), "-7");
  EXPECT_EQ(readOf<int>("\xC2\xA0"
                        "8"),
            "0");
  EXPECT_EQ(readOf<int>(std::string(400, '9')), "2147483647");
}

TEST(ExtractNumber, DecimalsNeedAllOfAnExponent) {
  expectRows(R"(=> -7  x => 0  .5 => 0.5  5. => 5  -.5 => -0.5  . => 0  +1.5 => 1.5  1,5 => 1
                1e2 => 100  1E+2x => 100  1e => 0  1e+ => 0  1e2e3 => 100  1e2.5 => 100
                1.5.5 => 1.5  inf => 0  nan => 0  0x1p3 => 0  1_0 => 1
                1e99999 => 1.79769e+308  -1e99999 => -1.79769e+308  1e-99999 => 0)",
             readOf<double>);
  expectRows("4e38 => 3.40282e+38  -4e38 => -3.40282e+38  1.1 => 1.1", readOf<float>);
}

}  // namespace
}  // namespace orvane::nimbrel::config::detail
