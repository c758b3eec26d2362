#pragma once

#include <ios>
#include <locale>
#include <sstream>
#include <string>

namespace orvane::nimbrel::config::detail {

/// A number as a formatted extraction reads it: leading white space is skipped, the first character
/// that cannot continue the number ends it, what is no number reads as 0, and one too large as the
/// type's limit. From an empty text nothing is read and `start` comes back. Never by the locale
/// that the host has set. Throws only `std::bad_alloc`.
template <typename Number>
[[nodiscard]] Number readStreamed(const std::string& text, Number start) {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  // A stream keeps what is thrown inside to itself, and the number would read as 0 for want of
  // memory.
  stream.exceptions(std::ios::badbit);
  stream >> start;
  return start;
}

}  // namespace orvane::nimbrel::config::detail
