// What one parse takes from the heap: "shape size contestant bytes peak kept allocations", one line
// each. Every allocation counts, libxml2's included, with the bytes that the C library sets aside
// for it. A parse before lets one-time things happen that no later parse pays for.

#include <malloc.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <string>

#include "bench/Contestants.h"
#include "bench/Documents.h"

// The C library's own names: what is counted still has to be allocated.
// NOLINTBEGIN(clang-diagnostic-reserved-identifier)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* address, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* address);
}
// NOLINTEND(clang-diagnostic-reserved-identifier)

namespace {

struct Heap {
  std::size_t bytes = 0;
  std::size_t peak = 0;
  std::size_t allocations = 0;
};
Heap heap;  // one thread only

void* taken(void* address) {
  heap.bytes += malloc_usable_size(address);
  heap.peak = std::max(heap.peak, heap.bytes);
  ++heap.allocations;
  return address;
}

}  // namespace

extern "C" {
void* malloc(std::size_t size) {
  return taken(__libc_malloc(size));
}
void* calloc(std::size_t count, std::size_t size) {
  return taken(__libc_calloc(count, size));
}
void* realloc(void* address, std::size_t size) {
  heap.bytes -= malloc_usable_size(address);
  return taken(__libc_realloc(address, size));
}
void* memalign(std::size_t alignment, std::size_t size) {
  return taken(__libc_memalign(alignment, size));
}
void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return taken(__libc_memalign(alignment, size));
}
int posix_memalign(void** address, std::size_t alignment, std::size_t size) {
  *address = taken(__libc_memalign(alignment, size));
  return *address == nullptr ? ENOMEM : 0;
}
void free(void* address) {
  heap.bytes -= malloc_usable_size(address);
  __libc_free(address);
}
}

namespace {

using namespace orvane::nimbrel::bench;

void report(const Shape& shape, std::size_t size) {
  const std::string document = shape.make(size);
  for (const Contestant& contestant : contestants()) {
    if (std::string(contestant.name) == "hand" && size > shape.handWrittenLimit) {
      continue;
    }
    const auto read = contestant.prepare(localesFor(shape));
    static_cast<void>(read(document));
    const Heap before = heap;
    heap.peak = heap.bytes;
    const Kept kept = read(document);
    const Heap after = heap;
    std::printf("%s %zu %s %zu %zu %zu %zu\n", shape.name, size, contestant.name, document.size(),
                after.peak - before.bytes, after.bytes - before.bytes,
                after.allocations - before.allocations);
  }
}

}  // namespace

int main() {
  for (const Shape& shape : shapes()) {
    if (shape.grows) {
      for (const std::size_t size : {100UL, 1'000UL, 10'000UL, 100'000UL}) {
        report(shape, size);
      }
    } else {
      report(shape, 0);
    }
  }
  return 0;
}
