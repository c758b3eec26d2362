#include "config/RuleReaders.h"

#include <limits>
#include <stdexcept>
#include <string>

#include "config/ReportCut.h"
#include "config/Suggestion.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::config::detail {

using util::LocalizableString;
using zel::util::StringUtil;

namespace {

using Direction = LocalizableString::Direction;

constexpr struct {
  std::string_view word;
  Direction direction;
} DIRECTIONS[] = {
    {"ltr", Direction::LTR},
    {"rtl", Direction::RTL},
    {"lro", Direction::LRO},
    {"rlo", Direction::RLO},
};

/// What is wrong with a text that gave no number.
std::string_view reasonOf(IntegerFault fault) noexcept {
  return fault == IntegerFault::TOO_LARGE ? "The largest number is 4294967295."
                                          : "An empty value is no number.";
}

}  // namespace

std::string_view trimmedAttribute(const util::XmlNode& node, std::string_view name) noexcept {
  return StringUtil::trimmed(node.attributeView(name));
}

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

unsigned int readCounter(const std::string& text, const Report& lost) {
  const IntegerReading reading = readNonNegativeInteger(text);
  if (reading.fault != IntegerFault::NONE) {
    lost(LegacyCode::COUNTER_REFUSED, "value", text, reasonOf(reading.fault));
    if (reading.fault == IntegerFault::TOO_LARGE) {
      throw std::overflow_error("input");
    }
    throw std::invalid_argument("input");
  }
  reportCut(reading.value, "value", text, lost);
  return reading.value;
}

util::Option<unsigned int> readNumber(std::string_view text, std::string_view attribute,
                                      const Report& lost) {
  util::Option<unsigned int> number;
  const IntegerReading reading = readNonNegativeInteger(text);
  if (reading.fault == IntegerFault::NONE) {
    number = reading.value;
    reportCut(reading.value, attribute, text, lost);
  } else {
    lost(LegacyCode::NUMBER_DROPPED, attribute, text, reasonOf(reading.fault));
  }
  return number;
}

util::Option<unsigned int> readSize(std::string_view text, std::string_view attribute,
                                    const Report& lost) {
  util::Option<unsigned int> size;
  if (text.data() == nullptr) {
    return size;
  }
  const IntegerReading reading = readNonNegativeInteger(text);
  if (reading.fault != IntegerFault::NONE) {
    lost(LegacyCode::NUMBER_DROPPED, attribute, text, reasonOf(reading.fault));
  } else if (reading.value == 0) {
    lost(LegacyCode::NUMBER_DROPPED, attribute, text,
         "A size is a number above 0, without a sign.");
  } else {
    size = reading.value;
    reportCut(reading.value, attribute, text, lost);
  }
  return size;
}

std::optional<Direction> readDirection(std::string_view text) noexcept {
  for (const auto& row : DIRECTIONS) {
    if (row.word == text) {
      return row.direction;
    }
  }
  return std::nullopt;
}

std::string_view suggestedDirection(std::string_view text) noexcept {
  Suggestion suggestion(text);
  for (const auto& row : DIRECTIONS) {
    suggestion.consider(row.word);
  }
  return suggestion.get();
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

std::optional<bool> readBooleanAttribute(const util::XmlNode& node, std::string_view name,
                                         const Report& lost, std::string_view reason) {
  const std::string_view written = trimmedAttribute(node, name);
  const std::optional<bool> value = readBoolean(written);
  if (lost && !value && written.data() != nullptr) {
    lost(LegacyCode::NOT_BOOLEAN, name, written, reason, suggestedWord(written, "true", "false"));
  }
  return value;
}

}  // namespace orvane::nimbrel::config::detail
