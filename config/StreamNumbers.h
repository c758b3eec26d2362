#pragma once

#include <algorithm>
#include <charconv>
#include <ios>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <type_traits>

#include "util/StringUtil.h"

namespace orvane::nimbrel::config::detail {

/// An integer as a formatted extraction reads it, but without a stream: making one takes longer
/// than all else that an element costs.
template <typename Integer>
[[nodiscard]] Integer readStreamedInteger(const std::string& text, Integer start) noexcept {
  static_assert(std::is_signed_v<Integer>,
                "of unsigned numbers a stream reads a sign in a way of its own");
  const char* const end = text.data() + text.size();
  const char* begin = std::find_if_not(text.data(), end, zel::util::StringUtil::isSpace);
  if (begin == end) {
    return start;
  }
  const bool isNegative = *begin == '-';
  if (*begin == '+' && end - begin > 1 && begin[1] != '-') {
    ++begin;
  }
  Integer number = 0;
  if (std::from_chars(begin, end, number).ec == std::errc::result_out_of_range) {
    using Limits = std::numeric_limits<Integer>;
    return isNegative ? Limits::min() : Limits::max();
  }
  return number;
}

/// A number as a formatted extraction reads it: leading white space is skipped, the first character
/// that cannot continue the number ends it, what is no number reads as 0, and one too large as the
/// type's limit. From an empty text nothing is read and `start` comes back. Never by the locale
/// that the host has set. Throws only `std::bad_alloc`.
template <typename Number>
[[nodiscard]] Number readStreamed(const std::string& text, Number start) {
  if constexpr (std::is_integral_v<Number>) {
    return readStreamedInteger(text, start);
  } else {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    // A stream keeps what is thrown inside to itself, and the number would read as 0 for want of
    // memory.
    stream.exceptions(std::ios::badbit);
    stream >> start;
    return start;
  }
}

}  // namespace orvane::nimbrel::config::detail
