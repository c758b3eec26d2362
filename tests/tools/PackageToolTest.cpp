#include <zip.h>

#include "tests/tools/Tool.h"

namespace nimbrel_test {
namespace {

using testing::HasSubstr;

struct Entry {
  std::string name;
  std::string content;
  int compression = ZIP_CM_DEFLATE;
  bool encrypted = false;
};

/// The bytes of a ZIP archive with these entries.
std::string package(const std::vector<Entry>& entries) {
  const TemporaryFile file("");
  int code = 0;
  zip_t* const archive = zip_open(file.path().c_str(), ZIP_TRUNCATE, &code);
  EXPECT_NE(archive, nullptr);
  for (const Entry& entry : entries) {
    zip_source_t* const source =
        zip_source_buffer(archive, entry.content.data(), entry.content.size(), 0);
    const auto index =
        static_cast<zip_uint64_t>(zip_file_add(archive, entry.name.c_str(), source, 0));
    EXPECT_EQ(zip_set_file_compression(archive, index, entry.compression, 0), 0);
    if (entry.encrypted) {
      EXPECT_EQ(zip_file_set_encryption(archive, index, ZIP_EM_AES_256, "secret"), 0);
    }
  }
  EXPECT_EQ(zip_close(archive), 0);
  return contentOf(file.path());
}

std::string replaceAll(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
  return text;
}

const std::string DOCUMENT = widget("<name>Chess</name>");

TEST(PackagedWidget, IsReadFromAFileAndFromStandardInput) {
  const std::string bytes =
      package({{"index.html", "<p>"}, {"sub/config.xml", "<no/>"}, {"config.xml", DOCUMENT}});
  const TemporaryFile file(bytes);
  for (const std::string& argument : {file.path(), std::string("-")}) {
    SCOPED_TRACE(argument);
    EXPECT_EQ(run({"show", "--field", "name", argument}, bytes).out, "Chess\n");
    EXPECT_EQ(run({"localized", "name", argument}, bytes).out, "*  Chess\n");
  }
  EXPECT_EQ(run({"show", "--url", "http://a.example/", "--field", "name", file.path()}).out,
            "Chess\n");
}

TEST(PackagedWidget, ARejectedDocumentIsNamedWithItsPackage) {
  const TemporaryFile file(package({{"config.xml", "<widget>\n</other>"}}));
  const Outcome outcome = run({"show", file.path()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.error, testing::StartsWith(file.path() + "/config.xml:2:"));
}

TEST(PackagedWidget, IsRefusedWhenItsDocumentIsInDoubt) {
  const std::size_t limit = std::size_t{16} * 1024 * 1024;
  std::string padded = widget("<name>Chess</name><license></license>");
  padded.insert(padded.find("</license>"), std::string(limit - padded.size(), ' '));
  const std::string whole = package({{"config.xml", DOCUMENT, ZIP_CM_STORE}});
  const std::string bomb = package({{"config.xml", padded + ' '}});
  // Both places that say how large the entry is say that it is small.
  const std::string lie =
      replaceAll(bomb, std::string("\x01\x00\x00\x01", 4), std::string("\x10\x00\x00\x00", 4));
  ASSERT_NE(lie, bomb);
  const struct {
    const char* title;
    std::string bytes;
    const char* reason;
  } cases[] = {
      {"empty archive", std::string("PK\x05\x06") + std::string(18, '\0'), "no config.xml at"},
      {"cut short", whole.substr(0, whole.size() / 2), "no usable ZIP archive: "},
      {"only its beginning", "PK\x03\x04", "no usable ZIP archive: "},
      {"in a folder", package({{"widget/config.xml", DOCUMENT}}), "no config.xml at the root"},
      {"a folder of that name", package({{"config.xml/a", DOCUMENT}}), "no config.xml at the root"},
      {"other case", package({{"Config.XML", DOCUMENT}}), "and 'Config.XML' is another"},
      {"twice",
       replaceAll(package({{"config.xml", DOCUMENT}, {"config.xmX", DOCUMENT}}), "config.xmX",
                  "config.xml"),
       "more than one config.xml"},
      {"encrypted", package({{"config.xml", DOCUMENT, ZIP_CM_STORE, true}}), "it is encrypted"},
      {"damaged", replaceAll(whole, "Chess", "Cheat"), "CRC error"},
      {"bomb", bomb, "config.xml is larger than 16 MiB"},
      {"bomb that lies", lie, "config.xml "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.title);
    const TemporaryFile file(c.bytes);
    for (const std::string& argument : {file.path(), std::string("-")}) {
      const Outcome outcome = run({"show", argument}, c.bytes);
      EXPECT_EQ(outcome.status, 1);
      EXPECT_THAT(outcome.error, HasSubstr(argument + ": "));
      EXPECT_THAT(outcome.error, HasSubstr(c.reason));
      EXPECT_EQ(outcome.out, "");
    }
  }
  EXPECT_EQ(run({"show", "--field", "name", "-"}, package({{"config.xml", padded}})).out,
            "Chess\n");
}

}  // namespace
}  // namespace nimbrel_test
