#include "config/StreamNumbers.h"

#include <charconv>
#include <limits>
#include <locale>
#include <sstream>
#include <string_view>
#include <system_error>

#include "util/StringUtil.h"

namespace orvane::nimbrel::config::detail {
namespace {

std::string_view skipSpace(std::string_view text) {
  while (!text.empty() && zel::util::StringUtil::isSpace(text.front())) {
    text.remove_prefix(1);
  }
  return text;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isSign(char c) {
  return c == '+' || c == '-';
}

/// The characters that an extraction takes for a floating-point number, before it asks whether they
/// are one. Neither hexadecimal digits nor "inf" and "nan" are among them.
std::string_view floatingPointPrefix(std::string_view text) {
  std::size_t i = !text.empty() && isSign(text[0]) ? 1 : 0;
  bool digits = false;
  bool point = false;
  bool exponent = false;
  for (; i < text.size(); ++i) {
    const char c = text[i];
    if (isDigit(c)) {
      digits = true;
    } else if (c == '.' && !point && !exponent) {
      point = true;
    } else if ((c == 'e' || c == 'E') && !exponent && digits) {
      exponent = true;
      if (i + 1 < text.size() && isSign(text[i + 1])) {
        ++i;
      }
    } else {
      break;
    }
  }
  return text.substr(0, i);
}

template <typename Number>
Number extractFloatingPoint(const std::string& text, Number start) {
  const std::string_view rest = skipSpace(text);
  if (rest.empty()) {
    return start;
  }
  std::string_view token = floatingPointPrefix(rest);
  if (!token.empty() && token.front() == '+') {
    token.remove_prefix(1);
  }
  Number value = 0;
  const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), value);
  if (error == std::errc::result_out_of_range) {
    // Too large or too small: rare enough to ask a stream which.
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    stream >> value;
    return value;
  }
  return error == std::errc() && end == token.data() + token.size() ? value : Number(0);
}

}  // namespace

int extractInt(const std::string& text, int start) {
  std::string_view rest = skipSpace(text);
  if (rest.empty()) {
    return start;
  }
  const bool negative = rest.front() == '-';
  if (rest.front() == '+') {
    rest.remove_prefix(1);
    if (rest.empty() || !isDigit(rest.front())) {
      return 0;
    }
  }
  int value = 0;
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
  static_cast<void>(end);
  if (error == std::errc::result_out_of_range) {
    return negative ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
  }
  return error == std::errc() ? value : 0;
}

float extractFloat(const std::string& text, float start) {
  return extractFloatingPoint(text, start);
}

double extractDouble(const std::string& text, double start) {
  return extractFloatingPoint(text, start);
}

}  // namespace orvane::nimbrel::config::detail
