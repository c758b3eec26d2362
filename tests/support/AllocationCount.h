#pragma once

namespace orvane::nimbrel::test {

/// How often the program has allocated with `new` so far; always 0 under clang's thread sanitizer.
/// A test that asks links `AllocationCount.cpp`, which replaces the operators.
int allocationCount() noexcept;

}  // namespace orvane::nimbrel::test
