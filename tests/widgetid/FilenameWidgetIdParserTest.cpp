#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "tests/widgetid/Mungers.h"
#include "tests/widgetid/Refusal.h"
#include "widgetid/FilenameWidgetIdParser.h"

namespace orvane::zel::config {
namespace {

TEST(FilenameWidgetIdParser, DerivesBothNamesFromTheNameWithoutItsExtension) {
  const FilenameWidgetIdParser parser(std::make_shared<MarkingFilenameMunger>());
  const struct {
    const char *filename, *authority, *directoryName;
  } cases[] = {
      {"app.wgt", "app", "{app}"},
      {"my app.beta.wgt", "my%20app.beta", "{my app.beta}"},
      {"archive", "archive", "{archive}"},
      {"app.", "app", "{app}"},
      {"..wgt", ".", "{.}"},
      {"dir.d/app", "dir", "{dir}"},
      {"dir/app.wgt", "dir%2Fapp", "{dir/app}"},
      {"A-z_0~.wgt", "A-z_0~", "{A-z_0~}"},
      {"50%41.wgt", "50%2541", "{50%41}"},
      {"\xC3\xBC\xFF\x01.wgt", "\xC3\xBC%FF%01", "{\xC3\xBC\xFF\x01}"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.filename);
    EXPECT_EQ(parser.deriveWidgetIdAuthority(c.filename), c.authority);
    EXPECT_EQ(parser.deriveDirectoryName(c.filename), c.directoryName);
  }
}

TEST(FilenameWidgetIdParser, RefusesNamesThatAreNone) {
  EXPECT_EQ(refusal<std::invalid_argument>([] { FilenameWidgetIdParser parser(nullptr); }),
            "filenameMunger was NULL.");
  const FilenameWidgetIdParser parser(std::make_shared<ThrowingFilenameMunger>());
  const struct {
    const char *filename, *text;
  } cases[] = {
      {nullptr, "widgetFilename was NULL."},
      {"", "filename cannot be the empty string"},
      {".wgt", "filename cannot be the empty string"},
      {".", "filename cannot be the empty string"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(
        refusal<std::invalid_argument>([&] { (void)parser.deriveWidgetIdAuthority(c.filename); }),
        c.text);
    EXPECT_EQ(refusal<std::invalid_argument>([&] { (void)parser.deriveDirectoryName(c.filename); }),
              c.text);
  }
  EXPECT_EQ(refusal<std::length_error>([&] { (void)parser.deriveDirectoryName("app.wgt"); }),
            "filename munger");
}

}  // namespace
}  // namespace orvane::zel::config
