// Linked to none of the libraries: they come with the module, and stay when it goes.

#include <dlfcn.h>
#include <malloc.h>

#include <fstream>

#include "tests/support/Checks.h"

namespace {

/// Loads a module, uses it and unloads it again.
void loadUseAndUnload() {
  void* const module = dlopen(NIMBREL_PLUGIN, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(module, nullptr) << dlerror();
  using Use = bool(const char*);
  Use* const use = reinterpret_cast<Use*>(dlsym(module, "useTheLibraries"));
  ASSERT_NE(use, nullptr);
  EXPECT_TRUE(use(NIMBREL_EXAMPLES "/config.xml"));
  ASSERT_EQ(dlclose(module), 0);
}

std::size_t mappings() {
  std::ifstream maps("/proc/self/maps");
  std::size_t count = 0;
  for (std::string line; std::getline(maps, line);) {
    ++count;
  }
  return count;
}

TEST(Unload, LeavesNothingBehindHoweverOften) {
  for (int round = 0; round < 5; ++round) {  // what is kept once is no leak
    loadUseAndUnload();
  }
  const std::size_t bytes = mallinfo2().uordblks;
  const std::size_t maps = mappings();
  for (int round = 0; round < 1000; ++round) {
    loadUseAndUnload();
  }
  // A leak would be one of each round; what malloc keeps at hand varies by some kilobytes.
  constexpr std::size_t SMALLEST_BLOCK = 32;
  EXPECT_LT(mallinfo2().uordblks, bytes + 1000 * SMALLEST_BLOCK);
  EXPECT_LE(mappings(), maps + 2);
  EXPECT_EQ(dlopen(NIMBREL_PLUGIN, RTLD_NOW | RTLD_NOLOAD), nullptr) << "it was not unloaded";
}

}  // namespace
