#include "config/ValueRules.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "util/StringUtil.h"

namespace orvane::nimbrel::config::detail {

using util::LocalizableString;
using zel::util::StringUtil;

IntegerReading readNonNegativeInteger(std::string_view text) noexcept {
  constexpr unsigned int MAX = std::numeric_limits<unsigned int>::max();
  unsigned int value = 0;
  bool endsInSpace = true;  // so that the empty text is no number
  for (const char c : text) {
    if (c < '0' || c > '9') {
      endsInSpace = StringUtil::isSpace(c);
      if (endsInSpace) {
        continue;
      }
      return {value, IntegerFault::NONE};
    }
    endsInSpace = false;
    const auto digit = static_cast<unsigned int>(c - '0');
    if (value > MAX / 10 || value * 10 > MAX - digit) {
      return {0, IntegerFault::TOO_LARGE};
    }
    value = value * 10 + digit;
  }
  if (endsInSpace) {
    return {0, IntegerFault::NO_NUMBER};
  }
  return {value, IntegerFault::NONE};
}

util::Option<unsigned int> readSize(std::string_view text) noexcept {
  util::Option<unsigned int> size;
  const IntegerReading reading = readNonNegativeInteger(text);
  if (reading.fault == IntegerFault::NONE && reading.value != 0) {
    size = reading.value;
  }
  return size;
}

std::optional<LocalizableString::Direction> readDirection(std::string_view text) noexcept {
  constexpr std::string_view WORDS[] = {"ltr", "rtl", "lro", "rlo"};  // in the order of the values
  const auto* const found = std::find(std::begin(WORDS), std::end(WORDS), text);
  if (found == std::end(WORDS)) {
    return std::nullopt;
  }
  return static_cast<LocalizableString::Direction>(found - std::begin(WORDS));
}

std::optional<bool> readBoolean(std::string_view text) noexcept {
  if (text == "true" || text == "false") {
    return text == "true";
  }
  return std::nullopt;
}

}  // namespace orvane::nimbrel::config::detail
