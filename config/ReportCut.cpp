#include "config/ReportCut.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string>
#include <system_error>

#include "util/StringUtil.h"

namespace orvane::nimbrel::config::detail {
namespace {

using zel::util::StringUtil;

bool isDigit(char c) noexcept {
  return c >= '0' && c <= '9';
}

/// Whether a text is a number of this type and nothing else.
template <typename Number>
bool isNumber(std::string_view text) noexcept {
  if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
  }
  Number value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size();
}

template <typename Number>
std::string isTaken(Number number) {
  char digits[32];  // room for any number
  const auto result = std::to_chars(std::begin(digits), std::end(digits), number);
  return std::string(std::begin(digits), result.ptr) + " is taken.";
}

}  // namespace

template <typename Number>
void explainCut(Number taken, std::string_view attribute, std::string_view text,
                const Report& lost) {
  if (!isNumber<Number>(text)) {
    lost(LegacyCode::NUMBER_CUT, attribute, text,
         "The number ends before the first character that cannot continue it: " + isTaken(taken));
  }
}

template <>
void explainCut(unsigned int taken, std::string_view attribute, std::string_view text,
                const Report& lost) {
  if (std::all_of(text.begin(), text.end(), isDigit)) {
    return;
  }
  const bool onlySpace = std::all_of(text.begin(), text.end(),
                                     [](char c) { return isDigit(c) || StringUtil::isSpace(c); });
  lost(LegacyCode::NUMBER_CUT, attribute, text,
       (onlySpace ? "White space between digits does not count: "
                  : "The number ends before the first character that is no digit: ") +
           isTaken(taken));
}

template void explainCut(int, std::string_view, std::string_view, const Report&);
template void explainCut(float, std::string_view, std::string_view, const Report&);
template void explainCut(double, std::string_view, std::string_view, const Report&);

}  // namespace orvane::nimbrel::config::detail
