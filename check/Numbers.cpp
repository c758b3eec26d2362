#include "check/Numbers.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <locale>
#include <sstream>
#include <system_error>

#include "util/Ascii.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::check {
namespace {

using config::ValueKind;
using util::ascii::isDigit;

bool isUnsigned(ValueKind kind) noexcept {
  return kind == ValueKind::NUMBER || kind == ValueKind::SIZE;
}

/// What a stream reads, which is how the parser does it.
template <typename Number>
std::string extracted(const std::string& text) {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  Number number = 0;
  stream >> number;
  char digits[32];  // room for any number
  const auto result = std::to_chars(std::begin(digits), std::end(digits), number);
  return {std::begin(digits), result.ptr};
}

template <typename Number>
bool isWhole(std::string_view text) noexcept {
  if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
  }
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

}  // namespace

bool isNumeric(ValueKind kind) noexcept {
  return isUnsigned(kind) || kind == ValueKind::INTEGER || kind == ValueKind::DECIMAL;
}

bool isWholeNumber(ValueKind kind, std::string_view text) {
  if (isUnsigned(kind)) {
    return std::all_of(text.begin(), text.end(), isDigit);
  }
  return kind == ValueKind::INTEGER ? isWhole<int>(text) : isWhole<double>(text);
}

std::string usedNumber(ValueKind kind, const std::string& text) {
  if (!isUnsigned(kind)) {
    return kind == ValueKind::INTEGER ? extracted<int>(text) : extracted<double>(text);
  }
  // White space between digits does not count.
  std::string digits;
  for (const char c : text) {
    if (isDigit(c)) {
      digits += c;
    } else if (!zel::util::StringUtil::isSpace(c)) {
      break;
    }
  }
  digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
  return digits.empty() ? "0" : digits;
}

}  // namespace orvane::nimbrel::check
