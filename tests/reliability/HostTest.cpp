// What a host does to its process while it uses the library.

#include <fcntl.h>
#include <libxml/parser.h>
#include <libxml/xmlmemory.h>
#include <malloc.h>
#include <pthread.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <locale>

#include "tests/support/Checks.h"
#include "tests/support/ConfigReader.h"
#include "tests/support/RecordDump.h"
#include "util/HostUriMunger.h"
#include "util/PortableFilenameMunger.h"
#include "widgetid/PelloWidgetIdParser.h"

namespace {

// What the host does at each allocation of libxml2, which it has taken over; blocks it still holds.
void (*atAllocation)() = nullptr;
long blocks = 0;

void* allocate(std::size_t size) {
  if (atAllocation != nullptr) {
    atAllocation();
  }
  ++blocks;
  return std::malloc(size);
}

void release(void* block) {
  blocks -= block == nullptr ? 0 : 1;
  std::free(block);
}

void* reallocate(void* block, std::size_t size) {
  return block == nullptr ? allocate(size) : std::realloc(block, size);
}

char* duplicate(const char* text) {
  return std::strcpy(static_cast<char*>(allocate(std::strlen(text) + 1)), text);
}

// Before libxml2 has allocated anything.
const bool installed = xmlMemSetup(release, allocate, reallocate, duplicate) == 0;

// The most bytes that the system gives at once; 0: as many as are wanted.
std::size_t mostAtOnce = 0;
// What the host does whenever a file is read.
void (*atRead)(int file) = nullptr;

}  // namespace

extern "C" __attribute__((visibility("default"))) ssize_t pread(int file, void* bytes,
                                                                std::size_t size, off_t offset) {
  if (atRead != nullptr) {
    atRead(file);
  }
  return ::syscall(SYS_pread64, file, bytes, mostAtOnce == 0 ? size : std::min(size, mostAtOnce),
                   offset);
}

namespace orvane::nimbrel::test {
namespace {

const char* const EVERYTHING = NIMBREL_EXAMPLES "/config.xml";

std::string dump() {
  Reader reader;
  reader.parse(EVERYTHING, nullptr);
  return dumpOf(reader.record());
}

TEST(Host, MayShutLibXmlDownAndStartItAgainAroundUs) {
  const std::string expected = dump();
  Reader reader;
  reader.parse(EVERYTHING, nullptr);
  for (int round = 0; round < 3; ++round) {
    SCOPED_TRACE(round);
    xmlCleanupParser();
    EXPECT_EQ(difference(dumpOf(reader.record()), expected), "");
    EXPECT_EQ(difference(dump(), expected), "");
    xmlInitParser();
    EXPECT_EQ(difference(dump(), expected), "");
    xmlDoc* const document = xmlReadMemory("<a/>", 4, nullptr, nullptr, 0);
    EXPECT_NE(document, nullptr);
    xmlFreeDoc(document);
  }
}

TEST(Host, MayAllocateForLibxml2AndGetsAllBack) {
  ASSERT_TRUE(installed);
  (void)dump();
  const long before = blocks;
  for (const char* xml : {"<widget", "<!DOCTYPE a [<!ENTITY e '<b/>'>]><a>&e;&e;</a>"}) {
    EXPECT_NE(thrownBy<config::ConfigParser::ConfigException>([&] { Reader().document(xml); }), "");
  }
  (void)dump();
  EXPECT_EQ(blocks, before);
}

TEST(Host, MayGiveFewerBytesOfAFileThanAreWanted) {
  const std::string expected = dump();
  for (const std::size_t most : {1U, 7U, 4095U}) {
    mostAtOnce = most;
    EXPECT_EQ(difference(dump(), expected), "") << most;
  }
  mostAtOnce = 0;
}

// A program that the host starts in the middle of a parse does not get the file.
TEST(Host, MayStartAProgramWhileAFileIsRead) {
  static int flags = 0;
  atRead = [](int file) { flags = ::fcntl(file, F_GETFD); };
  (void)dump();
  atRead = nullptr;
  EXPECT_EQ(flags, FD_CLOEXEC);
}

TEST(Host, MayCancelAThreadInTheMiddleOfAParse) {
  const std::string expected = dump();
  static bool wasPending = false;
  static std::string found;
  atRead = [](int /*file*/) {
    ::pthread_cancel(::pthread_self());
    ::pthread_testcancel();  // which reading a file is as well
    wasPending = true;
  };
  pthread_t thread = {};
  const auto work = [](void* /*nothing*/) -> void* {
    found = dump();
    ::pthread_testcancel();
    return nullptr;
  };
  ASSERT_EQ(::pthread_create(&thread, nullptr, work, nullptr), 0);
  void* result = nullptr;
  ASSERT_EQ(::pthread_join(thread, &result), 0);
  atRead = nullptr;
  EXPECT_TRUE(wasPending);
  EXPECT_EQ(difference(found, expected), "");
  EXPECT_EQ(result, PTHREAD_CANCELED);  // the request has waited
}

int allocationsToFork = 0;
pid_t child = -1;

TEST(Host, MayForkInTheMiddleOfAParse) {
  const std::string expected = dump();
  for (const int allocation : {1, 10, 30, 50}) {
    SCOPED_TRACE(allocation);
    allocationsToFork = allocation;
    child = -1;
    atAllocation = [] {
      if (--allocationsToFork == 0) {
        child = ::fork();
      }
    };
    const std::string found = dump();
    atAllocation = nullptr;
    if (child == 0) {
      ::_exit(found == expected && dump() == expected ? 0 : 1);
    }
    ASSERT_GT(child, 0);
    EXPECT_EQ(found, expected);
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
}

class Comma : public std::numpunct<char> {
  [[nodiscard]] char do_decimal_point() const override { return ','; }
};

TEST(Host, MayChangeItsLocaleInTheMiddleOfAParse) {
  const std::string expected = dump();
  static int allocations = 0;
  for (const int start : {0, 1}) {  // so that what follows the XML is read in either locale
    allocations = start;
    atAllocation = [] {
      const bool isOther = ++allocations % 2 == 0;
      std::setlocale(LC_ALL, isOther ? "C.UTF-8" : "C");
      const std::locale& classic = std::locale::classic();
      std::locale::global(isOther ? std::locale(classic, new Comma) : classic);
    };
    EXPECT_EQ(difference(dump(), expected), "");
    atAllocation = nullptr;
  }
  EXPECT_GT(allocations, 20);
  std::locale::global(std::locale::classic());
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
