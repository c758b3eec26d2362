#include "tools/output/JsonSink.h"

#include <charconv>
#include <cmath>

namespace orvane::nimbrel::tools {

void JsonSink::value(double number) {
  if (!std::isfinite(number)) {
    return literal("null");
  }
  const double size = std::abs(number);
  const bool plain = size == 0 || (size >= 1e-4 && size < 1e15);
  char digits[32];
  char* end = std::to_chars(digits, digits + sizeof(digits) - 2, number,
                            plain ? std::chars_format::fixed : std::chars_format::scientific)
                  .ptr;
  if (plain && std::string_view(digits, static_cast<std::size_t>(end - digits)).find('.') ==
                   std::string_view::npos) {
    *end++ = '.';
    *end++ = '0';
  }
  literal({digits, static_cast<std::size_t>(end - digits)});
}

void JsonSink::value(float number) {
  char digits[32];
  const char* const end = std::to_chars(digits, digits + sizeof(digits), number).ptr;
  double same = 0;
  std::from_chars(digits, end, same);
  value(same);
}

}  // namespace orvane::nimbrel::tools
