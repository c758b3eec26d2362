#include "config/RuleReaders.h"

#include <limits>
#include <stdexcept>
#include <string>

#include "config/Namespaces.h"
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

/// An attribute trimmed, for readers to which white space within the value makes no difference.
std::string_view trimmedAttribute(const util::XmlNode& node,
                                  const AttributeDescription& attribute) noexcept {
  return StringUtil::trimmed(node.attributeView(attribute.name));
}

bool isAmong(const std::string_view (&words)[2], std::string_view value) noexcept {
  return value == words[0] || value == words[1];
}

}  // namespace

const util::XmlNode& requireNode(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr) {
    throw std::invalid_argument("node cannot be NULL");
  }
  return *node;
}

util::Option<std::string> readAttribute(const util::XmlNode& node, std::string_view name,
                                        std::string_view namespaceUri) {
  util::Option<std::string> value;
  const std::string_view written = node.attributeView(name, namespaceUri);
  if (written.data() != nullptr) {
    StringUtil::squeeze(value.emplace(StringUtil::trimmed(written)));
  }
  return value;
}

util::Option<std::string> readAttribute(const util::XmlNode& node,
                                        const AttributeDescription& attribute) {
  return readAttribute(node, attribute.name,
                       attribute.isExtension ? EXTENSION_NAMESPACE : std::string_view());
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

unsigned int readCounter(const std::string& text, const AttributeDescription& attribute,
                         const Reporter& report) {
  const IntegerReading reading = readNonNegativeInteger(text);
  if (reading.fault == IntegerFault::NONE) {
    return reading.value;
  }
  report(FindingCode::NUMBER_REJECTED, attribute, text);
  if (reading.fault == IntegerFault::TOO_LARGE) {
    throw std::overflow_error("input");
  }
  throw std::invalid_argument("input");
}

util::Option<unsigned int> readNumber(std::string_view text, const AttributeDescription& attribute,
                                      const Reporter& report) {
  util::Option<unsigned int> number;
  const IntegerReading reading = readNonNegativeInteger(text);
  if (reading.fault == IntegerFault::NONE) {
    number = reading.value;
  } else {
    report(FindingCode::NOT_A_NUMBER, attribute, text);
  }
  return number;
}

util::Option<unsigned int> readSize(std::string_view text) noexcept {
  util::Option<unsigned int> size;
  const IntegerReading reading = readNonNegativeInteger(text);
  if (reading.fault == IntegerFault::NONE && reading.value != 0) {
    size = reading.value;
  }
  return size;
}

util::Option<unsigned int> readSizeAttribute(const util::XmlNode& node,
                                             const AttributeDescription& attribute,
                                             const Reporter& report) {
  util::Option<unsigned int> size;
  const std::string_view text = trimmedAttribute(node, attribute);
  if (text.data() != nullptr) {
    size = readSize(text);
    if (!size) {
      report(FindingCode::NOT_A_NUMBER, attribute, text);
    }
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

std::optional<bool> readBoolean(std::string_view text) noexcept {
  if (text == "true") {
    return true;
  }
  if (text == "false") {
    return false;
  }
  return std::nullopt;
}

std::optional<bool> readBooleanAttribute(const util::XmlNode& node,
                                         const AttributeDescription& attribute,
                                         const Reporter& report) {
  const std::string_view text = trimmedAttribute(node, attribute);
  const std::optional<bool> value = readBoolean(text);
  if (!value && text.data() != nullptr) {
    report(FindingCode::NOT_A_BOOLEAN, attribute, text);
  }
  return value;
}

bool isTriggered(const SwitchWords& words, std::string_view value,
                 const AttributeDescription& attribute, const Reporter& report) {
  if (isAmong(words.trigger, value)) {
    return true;
  }
  if (words.opposite[0].data() == nullptr || !isAmong(words.opposite, value)) {
    report(FindingCode::UNKNOWN_WORD, attribute, value);
  }
  return false;
}

}  // namespace orvane::nimbrel::config::detail
