#pragma once

#include <cstdint>

namespace orvane::nimbrel::fuzz {

/// Stands for all log lines that were written since the last call: equal lines in the same order
/// give the same number.
std::uint64_t takeLogDigest() noexcept;

}  // namespace orvane::nimbrel::fuzz
