#include "config/KeyedHash.h"

#include <unistd.h>

#include <cstddef>

namespace orvane::nimbrel::config::detail {
namespace {

constexpr std::uint64_t rotateLeft(std::uint64_t value, int bits) noexcept {
  return (value << bits) | (value >> (64 - bits));
}

struct SipState {
  std::uint64_t v0, v1, v2, v3;

  void round() noexcept {
    v0 += v1;
    v2 += v3;
    v1 = rotateLeft(v1, 13) ^ v0;
    v3 = rotateLeft(v3, 16) ^ v2;
    v0 = rotateLeft(v0, 32);
    v2 += v1;
    v0 += v3;
    v1 = rotateLeft(v1, 17) ^ v2;
    v3 = rotateLeft(v3, 21) ^ v0;
    v2 = rotateLeft(v2, 32);
  }

  void absorb(std::uint64_t word) noexcept {
    v3 ^= word;
    round();
    v0 ^= word;
  }
};

/// The first eight bytes of a text as a number.
std::uint64_t wordOf(std::string_view bytes) noexcept {
  std::uint64_t word = 0;
  bytes.copy(reinterpret_cast<char*>(&word), sizeof(word));
  return word;
}

}  // namespace

KeyedHash::KeyedHash() noexcept : key_{0, 0} {
  if (::getentropy(key_, sizeof(key_)) != 0) {
    // Where the kernel has none to give, at least the place in memory is not known outside.
    key_[0] = reinterpret_cast<std::uintptr_t>(this);
  }
}

std::uint32_t KeyedHash::operator()(std::string_view text) const noexcept {
  // The constants are those of the algorithm.
  SipState state{key_[0] ^ 0x736F6D6570736575U, key_[1] ^ 0x646F72616E646F6DU,
                 key_[0] ^ 0x6C7967656E657261U, key_[1] ^ 0x7465646279746573U};
  const std::uint64_t length = text.size();
  for (; text.size() >= 8; text.remove_prefix(8)) {
    state.absorb(wordOf(text));
  }
  state.absorb((length << 56) | wordOf(text));
  state.v2 ^= 0xFF;
  state.round();
  state.round();
  state.round();
  return static_cast<std::uint32_t>(state.v0 ^ state.v1 ^ state.v2 ^ state.v3);
}

}  // namespace orvane::nimbrel::config::detail
