#include "config/RuleReaders.h"

#include <limits>

#include "util/StringUtil.h"

namespace orvane::nimbrel::config::internal {

using zel::util::StringUtil;

std::string_view trimmedAttribute(const util::XmlNode& node, std::string_view name) noexcept {
  return StringUtil::trimmed(node.attributeView(name));
}

IntegerReading readNonNegativeInteger(std::string_view text) noexcept {
  constexpr unsigned int MAX = std::numeric_limits<unsigned int>::max();
  unsigned int value = 0;
  bool endsInSpace = true;  // so that the empty text is no number
  for (const char c : text) {
    endsInSpace = StringUtil::isSpace(c);
    if (endsInSpace) {
      continue;
    }
    if (c < '0' || c > '9') {
      return {value, IntegerFault::NONE};
    }
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

std::optional<bool> readBoolean(std::string_view text) noexcept {
  if (text == "true") {
    return true;
  }
  if (text == "false") {
    return false;
  }
  return std::nullopt;
}

}  // namespace orvane::nimbrel::config::internal
