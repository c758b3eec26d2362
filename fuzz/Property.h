#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

/// A fuzz target: runs one input. Name and signature are libFuzzer's; always returns 0.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size);

namespace orvane::nimbrel::fuzz {

/// Ends the process when a property does not hold; the engine keeps the input, the replay names it.
inline void require(bool holds, const char* property) {
  if (!holds) {
    std::fprintf(stderr, "Property violated: %s\n", property);
    std::abort();
  }
}

/// Takes what stands before the first `separator` off the front of a text, the separator too; the
/// whole text where there is none.
inline std::string_view takeUpTo(char separator, std::string_view& text) {
  const std::string_view::size_type end = text.find(separator);
  const std::string_view taken = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return taken;
}

inline std::string_view viewOf(const unsigned char* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// A copy that ends at its first NUL, as it would as a C string.
inline std::string cString(std::string_view text) {
  return std::string(text.substr(0, text.find('\0')));
}

}  // namespace orvane::nimbrel::fuzz
