#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace orvane::nimbrel::test {

/// `count` blocks of 16 plain characters, each of which brings the hash of libstdc++ (64 bits,
/// little endian) from `state` to 0: the second half of a block undoes what its first half did.
inline std::vector<std::string> blocksToZero(std::uint64_t state, std::size_t count) {
  constexpr std::uint64_t FACTOR = 0xc6a4a7935bd1e995;
  constexpr std::uint64_t INVERSE = 0x5f7a0ea7e59b19bd;  // of FACTOR, modulo 2 to the 64
  const auto mixed = [](std::uint64_t bits) { return bits ^ (bits >> 47U); };
  const auto isPlain = [](char c) {
    return c > ' ' && c <= '~' && c != '&' && c != '<' && c != '\'' && c != '"';
  };
  std::vector<std::string> blocks;
  for (std::uint64_t number = 0; blocks.size() < count; ++number) {
    std::string block(16, 'a');
    for (std::size_t i = 0; i < 8; ++i) {
      block[i] = static_cast<char>('a' + (number >> (4 * i)) % 16);
    }
    std::uint64_t half = 0;
    std::memcpy(&half, block.data(), sizeof half);
    half = (state ^ mixed(half * FACTOR) * FACTOR) * FACTOR;
    half = mixed(half * INVERSE) * INVERSE;
    std::memcpy(&block[8], &half, sizeof half);
    if (std::all_of(block.begin(), block.end(), isPlain)) {
      blocks.push_back(block);
    }
  }
  return blocks;
}

/// `count` different names of 32 plain characters that have the same hash to libstdc++.
inline std::vector<std::string> collidingNames(std::size_t count) {
  std::size_t side = 1;
  while (side * side < count) {
    ++side;
  }
  const std::vector<std::string> first = blocksToZero(0xc70f6907 ^ (32 * 0xc6a4a7935bd1e995), side);
  const std::vector<std::string> second = blocksToZero(0, side);
  std::vector<std::string> names;
  for (std::size_t i = 0; i < count; ++i) {
    names.push_back(first[i / side] + second[i % side]);
  }
  return names;
}

}  // namespace orvane::nimbrel::test
