// The first parse of a thread, when the process has no memory for what libxml2 keeps for the
// thread.

#include <cerrno>
#include <cstdlib>
#include <new>
#include <thread>

#include "tests/support/Checks.h"
#include "tests/support/ConfigReader.h"

extern "C" {
// Those of the C library under the names that nobody replaces.
// NOLINTBEGIN(clang-diagnostic-reserved-identifier)
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
// NOLINTEND(clang-diagnostic-reserved-identifier)
}

namespace {

// Of each thread: its allocations up to the one that fails; 0: none does.
thread_local long left = 0;

bool fails() noexcept {
  const bool isDue = left > 0 && --left == 0;
  errno = isDue ? ENOMEM : errno;
  return isDue;
}

}  // namespace

extern "C" {

#define REPLACES __attribute__((visibility("default")))

REPLACES void* malloc(std::size_t size) {
  return fails() ? nullptr : __libc_malloc(size);
}

REPLACES void* calloc(std::size_t count, std::size_t size) {
  return fails() ? nullptr : __libc_calloc(count, size);
}

REPLACES void* realloc(void* block, std::size_t size) {
  return fails() ? nullptr : __libc_realloc(block, size);
}
}

namespace orvane::nimbrel::test {
namespace {

TEST(ThreadMemory, TheFirstParseOfAThreadThrowsAndTheNextSucceeds) {
  const std::string document = widget("<name>Chess</name>");
  (void)Reader().document(
      document);  // libxml2 takes the first thread that uses it for the main one
  bool failed = true;
  long n = 1;
  for (; failed; ++n) {
    SCOPED_TRACE(n);
    std::thread([&] {
      left = n;
      try {
        (void)Reader().document(document);
        failed = left == 0;
      } catch (const std::bad_alloc&) {
      }
      left = 0;
      EXPECT_STREQ(Reader().document(document)->getName().get().c_str(), "Chess");
    }).join();
    ASSERT_LT(n, 1000);
  }
  EXPECT_GT(n, 20);
}

}  // namespace
}  // namespace orvane::nimbrel::test
