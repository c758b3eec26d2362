#include "tests/reliability/FaultyMemory.h"

#include <libxml/xmlmemory.h>
#include <unicode/uclean.h>

#include <atomic>
#include <cstdlib>
#include <cstring>

namespace {

std::atomic<long> live{0};
std::atomic<long> countdown{0};  // 0: nothing is to fail; -1: something has failed

bool fails() noexcept {
  if (countdown > 0 && --countdown == 0) {
    countdown = -1;
    return true;
  }
  return false;
}

void* allocate(std::size_t size) noexcept {
  void* const block = fails() ? nullptr : std::malloc(size == 0 ? 1 : size);
  live += block != nullptr ? 1 : 0;
  return block;
}

void release(void* block) noexcept {
  live -= block != nullptr ? 1 : 0;
  std::free(block);
}

void* reallocate(void* block, std::size_t size) noexcept {
  if (block == nullptr) {
    return allocate(size);
  }
  return fails() ? nullptr : std::realloc(block, size);
}

char* duplicate(const char* text) noexcept {
  void* const copy = allocate(std::strlen(text) + 1);
  return static_cast<char*>(copy == nullptr ? nullptr
                                            : std::strcpy(static_cast<char*>(copy), text));
}

// Before either library has allocated anything.
const bool installed = [] {
  UErrorCode status = U_ZERO_ERROR;
  u_setMemoryFunctions(
      nullptr, [](const void*, std::size_t size) { return allocate(size); },
      [](const void*, void* block, std::size_t size) { return reallocate(block, size); },
      [](const void*, void* block) { release(block); }, &status);
  return xmlMemSetup(release, allocate, reallocate, duplicate) == 0 && U_SUCCESS(status);
}();

void* orThrow(void* block) {
  if (block == nullptr) {
    throw std::bad_alloc();
  }
  return block;
}

void* allocateAligned(std::size_t size, std::align_val_t alignment) noexcept {
  const auto unit = static_cast<std::size_t>(alignment);
  void* const block = fails() ? nullptr : std::aligned_alloc(unit, (size + unit - 1) / unit * unit);
  live += block != nullptr ? 1 : 0;
  return block;
}

}  // namespace

void* operator new(std::size_t size) {
  return orThrow(allocate(size));
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return allocate(size);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
  return orThrow(allocateAligned(size, alignment));
}
void operator delete(void* block) noexcept {
  release(block);
}
void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept {
  release(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
  release(block);
}
void operator delete(void* block, std::align_val_t /*alignment*/) noexcept {
  release(block);
}
void operator delete(void* block, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
  release(block);
}

namespace orvane::nimbrel::test {

long liveBlocks() noexcept {
  return live;
}

void failAllocation(long n) noexcept {
  countdown = n;
}

bool stopFailing() noexcept {
  return countdown.exchange(0) < 0;
}

TEST(FaultyMemory, IsInstalledAndFailsOnce) {
  ASSERT_TRUE(installed);
  failAllocation(2);
  void* const first = xmlMalloc(1);
  void* const second = xmlMalloc(1);
  void* const third = xmlMalloc(1);
  EXPECT_TRUE(stopFailing());
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(second, nullptr);
  EXPECT_NE(third, nullptr);
  xmlFree(first);
  xmlFree(third);
}

}  // namespace orvane::nimbrel::test
