#include "tests/support/Checks.h"
#include "tests/widgetid/Mungers.h"
#include "widgetid/FilenameWidgetIdParser.h"

namespace orvane::zel::config {
namespace {

using nimbrel::test::thrownBy;

TEST(FilenameWidgetIdParser, DerivesBothNamesFromTheNameWithoutItsExtension) {
  const FilenameWidgetIdParser parser(std::make_shared<MarkingFilenameMunger>());
  nimbrel::test::expectRows(
      "app.wgt => app {app}  archive => archive {archive}  app. => app {app}  ..wgt => . {.}  "
      "my app.beta.wgt => my%20app.beta {my app.beta}  dir.d/app => dir {dir}  "
      "dir/app.wgt => dir%2Fapp {dir/app}  A-z_0~.wgt => A-z_0~ {A-z_0~}  "
      "50%41.wgt => 50%2541 {50%41}  \u00FC\xFF\x01.wgt => \u00FC%FF%01 {\u00FC\xFF\x01}",
      [&](const std::string& name) {
        return parser.deriveWidgetIdAuthority(name.c_str()) + " " +
               parser.deriveDirectoryName(name.c_str());
      });
}

TEST(FilenameWidgetIdParser, RejectsNamesThatAreNone) {
  EXPECT_EQ(thrownBy<std::invalid_argument>([] { FilenameWidgetIdParser parser(nullptr); }),
            "filenameMunger was NULL.");
  const FilenameWidgetIdParser parser(std::make_shared<ThrowingFilenameMunger>());
  for (const char* name : std::initializer_list<const char*>{nullptr, "", ".wgt", "."}) {
    const std::string why =
        name == nullptr ? "widgetFilename was NULL." : "filename cannot be the empty string";
    EXPECT_EQ(thrownBy<std::invalid_argument>([&] { (void)parser.deriveWidgetIdAuthority(name); }),
              why);
    EXPECT_EQ(thrownBy<std::invalid_argument>([&] { (void)parser.deriveDirectoryName(name); }),
              why);
  }
  EXPECT_EQ(thrownBy<std::length_error>([&] { (void)parser.deriveDirectoryName("app.wgt"); }),
            "filename munger");
}

}  // namespace
}  // namespace orvane::zel::config
