#include "config/handlers/ExtensionFrame.h"

#include "config/ValueRules.h"

namespace orvane::nimbrel::config::detail {
namespace {

bool isAmong(const std::string_view (&words)[2], std::string_view value) noexcept {
  return value == words[0] || value == words[1];
}

}  // namespace

bool Setting::isTriggered(const SwitchWords& words) const {
  const bool triggers = isAmong(words.trigger, valueText());
  if (!triggers && (words.opposite[0].data() == nullptr || !isAmong(words.opposite, valueText()))) {
    reportValue(FindingCode::UNKNOWN_WORD);
  }
  return triggers;
}

unsigned int Setting::number() const {
  const IntegerReading reading = readNonNegativeInteger(valueText());
  if (reading.fault != IntegerFault::NONE) {
    reportValue(FindingCode::NUMBER_REJECTED);
    return context.rules.parseNonNegativeInteger(value.c_str());  // throws
  }
  return reading.value;
}

bool stopAtElement(HandlerContext& context, const util::XmlNode& child, const char* error) {
  context.errorText = error;
  return context.readerOf(child).report(FindingCode::UNEXPECTED_CHILD);
}

bool stopAtAttribute(HandlerContext& context, const ElementReader& child,
                     const AttributeDescription& attribute, const char* error) {
  context.errorText = error;
  return child.report(FindingCode::MISSING_ATTRIBUTE, attribute);
}

}  // namespace orvane::nimbrel::config::detail
