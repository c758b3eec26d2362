#pragma once

#include <cstdint>
#include <string_view>

namespace orvane::nimbrel::config::detail {

/// A hash whose values nobody outside can foresee: SipHash-1-3 with a random key. A document whose
/// author made all its keys collide under `std::hash` would cost the square of its size.
class KeyedHash {
 public:
  KeyedHash() noexcept;

  [[nodiscard]] std::uint32_t operator()(std::string_view text) const noexcept;

 private:
  std::uint64_t key_[2];
};

}  // namespace orvane::nimbrel::config::detail
