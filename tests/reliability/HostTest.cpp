// What a host does to its process while it uses the library.

#include <libxml/globals.h>
#include <libxml/parser.h>
#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

#include "tests/support/Checks.h"
#include "tests/support/ConfigReader.h"
#include "tests/support/RecordDump.h"
#include "util/HostUriMunger.h"
#include "util/PortableFilenameMunger.h"
#include "widgetid/PelloWidgetIdParser.h"

namespace orvane::nimbrel::test {
namespace {

const char* const EVERYTHING = NIMBREL_EXAMPLES "/config.xml";

std::string dump() {
  Reader reader;
  reader.parse(EVERYTHING, nullptr);
  return RecordDump::of(reader.record());
}

TEST(Host, MayShutLibXmlDownAndStartItAgainAroundUs) {
  const int bufferSize = xmlDefaultBufferSize;
  const std::string expected = dump();
  Reader reader;
  reader.parse(EVERYTHING, nullptr);
  for (int round = 0; round < 3; ++round) {
    SCOPED_TRACE(round);
    xmlCleanupParser();
    EXPECT_EQ(RecordDump::of(reader.record()), expected);
    EXPECT_EQ(dump(), expected);
    xmlInitParser();
    EXPECT_EQ(dump(), expected);
    xmlDoc* const document = xmlReadMemory("<a/>", 4, nullptr, nullptr, 0);
    EXPECT_NE(document, nullptr);
    xmlFreeDoc(document);
    EXPECT_EQ(xmlDefaultBufferSize, bufferSize);
  }
}

// The file that is opened next takes the number of standard error; nothing may be written there.
TEST(Host, WritesNothingWhereStandardErrorWas) {
  std::string path = testing::TempDir() + "nimbrel-stderr-XXXXXX";
  const int file = mkstemp(path.data());
  ASSERT_GE(file, 0);
  const int kept = dup(STDERR_FILENO);
  ASSERT_EQ(dup2(file, STDERR_FILENO), STDERR_FILENO);
  for (const char* xml :
       {"<widget", "<a b='&x;'/>", "<!DOCTYPE a SYSTEM 'x'><a>&e;</a>", "\xFF\xFE"}) {
    EXPECT_NE(thrownBy<config::ConfigParser::ConfigException>([&] { Reader().document(xml); }), "");
  }
  close(STDERR_FILENO);
  EXPECT_FALSE(dump().empty());  // opens the document as number 2
  read(extension("settings", asset("", "")));
  ASSERT_EQ(dup2(kept, STDERR_FILENO), STDERR_FILENO);
  close(kept);
  struct stat status = {};
  ASSERT_EQ(fstat(file, &status), 0);
  EXPECT_EQ(status.st_size, 0);
  close(file);
  unlink(path.c_str());
}

// GLib would keep every scheme that libsoup does not know until the process ends.
TEST(Host, IsLeftNothingOfAnIdentifier) {
  const zel::config::PelloWidgetIdParser parser(
      std::make_shared<zel::util::HostUriMunger>(),
      std::make_shared<zel::util::PortableFilenameMunger>());
  const auto deriveMany = [&](const std::string& prefix) {
    for (int number = 0; number < 1000; ++number) {
      const std::string id = prefix + std::to_string(number) + "://host/path";
      EXPECT_EQ(parser.deriveDirectoryName(id.c_str()), "host=2Fpath");
      EXPECT_EQ(parser.deriveDirectoryName(("\f x\ny" + id).c_str()), "host=2Fpath");
    }
  };
  deriveMany("warm-up");
  const std::size_t bytes = mallinfo2().uordblks;
  deriveMany("a-scheme-of-some-length");
  EXPECT_LT(mallinfo2().uordblks, bytes + 16000);
}

}  // namespace
}  // namespace orvane::nimbrel::test
