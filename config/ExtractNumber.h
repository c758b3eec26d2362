#pragma once

#include <algorithm>
#include <charconv>
#include <ios>
#include <limits>
#include <locale>
#include <sstream>
#include <string>

#include "util/StringUtil.h"

namespace orvane::nimbrel::config::detail {

/// A number as a formatted extraction reads it: leading white space is skipped, the first character
/// that cannot continue the number ends it, what is no number reads as 0, and one too large as the
/// type's limit. From an empty text nothing is read and `start` comes back. Never by the locale
/// that the host has set. Throws only `std::bad_alloc`.
template <typename Decimal>
[[nodiscard]] Decimal extractNumber(const std::string& text, Decimal start) {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  // A stream keeps what is thrown inside to itself, and the number would read as 0 for want of
  // memory.
  stream.exceptions(std::ios::badbit);
  stream >> start;
  return start;
}

/// The same for an integer, without a stream: making one takes longer than all else that an element
/// costs.
[[nodiscard]] inline int extractNumber(const std::string& text, int start) noexcept {
  const char* const end = text.data() + text.size();
  const char* begin = std::find_if_not(text.data(), end, zel::util::StringUtil::isSpace);
  if (begin == end) {
    return start;
  }
  const bool isNegative = *begin == '-';
  if (*begin == '+' && end - begin > 1 && begin[1] != '-') {
    ++begin;
  }
  int number = 0;
  if (std::from_chars(begin, end, number).ec == std::errc::result_out_of_range) {
    return isNegative ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
  }
  return number;
}

}  // namespace orvane::nimbrel::config::detail
