#pragma once

#include <exception>
#include <new>

#include "tests/support/Checks.h"

// A program that includes FaultyMemory.cpp has its memory counted, and can have it run out: that of
// operator new, of libxml2 and of ICU. GLib's is left alone: GLib ends the process.
namespace orvane::nimbrel::test {

/// Blocks that are allocated and not yet freed, by any thread.
[[nodiscard]] long liveBlocks() noexcept;
/// Lets the n-th allocation from now on fail, counted from 1, and then none.
void failAllocation(long n) noexcept;
/// Ends that. Whether an allocation has failed.
bool stopFailing() noexcept;

/// Runs `call` again and again, each time with another allocation that fails, from the first to the
/// last: each time it must throw `std::bad_alloc` and leave nothing behind, or, where a dependency
/// can do without, succeed. `prepare` and `verify` run before and after each call with memory for
/// all; `verify` is told whether the call has thrown, and ends in the same state each time that it
/// has: that is how a leak shows. Returns how often an allocation failed.
template <typename Prepare, typename Call, typename Verify>
long failEachAllocation(Prepare prepare, Call call, Verify verify) {
  long blocks = -1;
  for (long n = 1;; ++n) {
    SCOPED_TRACE("allocation " + std::to_string(n));
    prepare();
    bool threw = false;
    failAllocation(n);
    try {
      call();
    } catch (const std::bad_alloc&) {
      threw = true;
    } catch (const std::exception& other) {
      stopFailing();
      ADD_FAILURE() << "another exception: " << other.what();
    }
    const bool failed = stopFailing();
    verify(threw);
    if (threw) {
      EXPECT_EQ(liveBlocks(), blocks < 0 ? liveBlocks() : blocks) << "blocks leaked";
      blocks = liveBlocks();
    }
    if (!failed) {
      EXPECT_FALSE(threw);
      return n - 1;
    }
    if (testing::Test::HasFailure()) {
      return n;
    }
  }
}

}  // namespace orvane::nimbrel::test
