#include "tests/support/AllocationCount.h"

#include <atomic>
#include <cstdlib>
#include <new>

// Clang's thread sanitizer has operators of its own, which cannot be replaced.
#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define NIMBREL_TEST_OWN_NEW 0
#endif
#endif
#ifndef NIMBREL_TEST_OWN_NEW
#define NIMBREL_TEST_OWN_NEW 1
#endif

namespace {

std::atomic<int> allocations{0};

}  // namespace

#if NIMBREL_TEST_OWN_NEW
void* operator new(std::size_t size) {
  allocations.fetch_add(1, std::memory_order_relaxed);
  if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
    return memory;
  }
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}
#endif

namespace orvane::nimbrel::test {

int allocationCount() noexcept {
  return allocations.load(std::memory_order_relaxed);
}

}  // namespace orvane::nimbrel::test
