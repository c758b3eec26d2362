#include <gmock/gmock.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <locale>
#include <sstream>

#include "tests/support/Checks.h"
#include "tests/support/ConfigReader.h"

namespace orvane::nimbrel::config {
namespace {

using namespace test;

/// Reads a document whose record a careless use of the host's locale would change.
void expectTheUsualRecord() {
  const auto record =
      read("<access origin='http://h:8080'/><name>\xC2\xA0I\xC4\xB0\xE9\xBB\x85</name>" +
               extension("settings", named("setting", "zoomFactor", "1.500,5") +
                                         named("setting", "defaultFontSize", "1.234") +
                                         named("setting", "minimumFontSize", "9.999.999.999")) +
               extension("network", asset("maxConnections", "1.234")) +
               extension("resources", asset("ApplicationCacheLoadDelay", "1234.25")),
           "height='1234' viewmodes='I\xC2\xA0\xC2\x85i' tavlo:applicationId='iii'");
  EXPECT_EQ(record->getAppSettings().zoomFactor, 1.5F);
  EXPECT_EQ(record->getAppSettings().defaultFontSize, 1);
  EXPECT_EQ(record->getAppSettings().minimumFontSize, 9);
  EXPECT_EQ(record->getLocalResources().applicationCacheLoadDelay, 1234.25);
  EXPECT_EQ(record->getNetSettings().maxConnections, 1U);
  EXPECT_EQ(record->getAccessRequestList().at(0).port, 8080);
  EXPECT_EQ(show(record->getHeight()), "1234");
  EXPECT_STREQ(record->getName().get().c_str(), "I\xC4\xB0\xE9\xBB\x85");
  EXPECT_THAT(record->getWindowModes(), testing::ElementsAre("I\xC2\xA0\xC2\x85i"));
  EXPECT_EQ(show(record->getTavloApplicationId()), "iii");
}

/// Sets a C++ locale with a decimal comma for the whole process while it lives.
class CommaDecimal {
 public:
  CommaDecimal() : before_(std::locale::global(std::locale(std::locale::classic(), new Facet))) {
    double value = 0;
    std::istringstream("1,5") >> value;
    EXPECT_EQ(value, 1.5);  // it is in effect
  }
  CommaDecimal(const CommaDecimal&) = delete;
  CommaDecimal& operator=(const CommaDecimal&) = delete;
  ~CommaDecimal() { std::locale::global(before_); }

 private:
  class Facet : public std::numpunct<char> {
    [[nodiscard]] char do_decimal_point() const override { return ','; }
    [[nodiscard]] char do_thousands_sep() const override { return '.'; }
    [[nodiscard]] std::string do_grouping() const override { return "\3"; }
  };
  std::locale before_;
};

TEST(HostLocale, OfCxxChangesNothing) {
  expectTheUsualRecord();
  const CommaDecimal locale;
  expectTheUsualRecord();
}

TEST(HostLocale, OfCChangesNothing) {
  // Turkish has a decimal comma and another idea of "i"; here single bytes are letters, too.
  const std::string directory = testing::TempDir() + "nimbrel-locale-" + std::to_string(::getpid());
  std::filesystem::create_directories(directory);
  const std::string compile =
      "localedef -i tr_TR -f ISO-8859-9 " + directory + "/test >/dev/null 2>&1";
  ::setenv("LOCPATH", directory.c_str(), 1);
  ::setenv("LC_ALL", "test", 1);
  const bool inEffect = std::system(compile.c_str()) == 0 && std::setlocale(LC_ALL, "") != nullptr;
  if (inEffect) {
    EXPECT_EQ(std::strtod("1,5", nullptr), 1.5);
    expectTheUsualRecord();
    const CommaDecimal both;
    expectTheUsualRecord();
    std::setlocale(LC_ALL, "C");
  }
  ::unsetenv("LOCPATH");
  ::unsetenv("LC_ALL");
  std::filesystem::remove_all(directory);
  if (!inEffect) {
    GTEST_SKIP() << "localedef cannot compile tr_TR.ISO-8859-9";
  }
}

}  // namespace
}  // namespace orvane::nimbrel::config
