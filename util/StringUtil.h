#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "util/Api.h"

namespace orvane::zel::util {

/// Helpers on byte strings. White space is the six ASCII characters that the C locale's `isspace`
/// knows (U+0020 and U+0009 to U+000D), whatever locale the host has set; bytes from 0x80 up are
/// never white space. Stateless, for any thread. `trim` and `squeeze` never throw; the others throw
/// only `std::bad_alloc` and change nothing (strong guarantee).
class NIMBREL_UTIL_API StringUtil {
 public:
  StringUtil() = delete;

  /// Whether a byte is one of the six.
  [[nodiscard]] static bool isSpace(char byte) noexcept;
  /// The part of a text between white space at both ends. Never copies.
  [[nodiscard]] static std::string_view trimmed(std::string_view text) noexcept;
  /// Removes white space at both ends, in place.
  static void trim(std::string& text);
  /// Replaces each run of white space by one space, in place.
  static void squeeze(std::string& text);
  /// What `squeeze`, then `trim` make of a text, in one pass.
  [[nodiscard]] static std::string squeezeAndTrim(std::string_view text);
  /// The pieces between separators, empty ones too. The empty string gives no piece.
  [[nodiscard]] static std::vector<std::string> split(const std::string& text, char separator);
};

}  // namespace orvane::zel::util
