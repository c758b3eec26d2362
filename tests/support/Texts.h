#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

// Makers of texts for tests.
namespace orvane::nimbrel::test {

inline std::string repeated(std::string_view text, std::size_t count) {
  std::string all;
  all.reserve(text.size() * count);
  for (; count > 0; --count) {
    all += text;
  }
  return all;
}

inline std::string lowerAscii(std::string text) {
  for (char& byte : text) {
    byte = byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
  }
  return text;
}

/// Calls with every string of 1 to `length` bytes of the alphabet until a check is fatal.
template <typename Call>
void forEachString(std::string_view alphabet, int length, const Call& call,
                   const std::string& stem = "") {
  for (std::size_t i = 0; i < alphabet.size() && !testing::Test::HasFatalFailure(); ++i) {
    call(stem + alphabet[i]);
    if (length > 1) {
      forEachString(alphabet, length - 1, call, stem + alphabet[i]);
    }
  }
}

}  // namespace orvane::nimbrel::test
