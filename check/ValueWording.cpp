#include "check/ValueWording.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>

#include "check/NameWording.h"
#include "check/ValueAdvice.h"
#include "check/Vocabulary.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::check {
namespace {

using config::KeyDescription;
using config::KeyRule;
using zel::util::StringUtil;

/// The ranges of numbers that the parser does not tell by their kind.
constexpr struct {
  std::string_view key;
  std::string_view range;
} RANGES[] = {
    {"defaultFontSize", "of at least 1"},
    {"minimumFontSize", "of at least 0"},
    {"zoomFactor", "above 0"},
    {"ApplicationCacheLoadDelay", "of at least 0"},
};

std::string quotedList(std::initializer_list<std::string_view> words) {
  std::vector<std::string> quoted;
  for (const std::string_view word : words) {
    const std::string text = '"' + std::string(word) + '"';
    if (!word.empty() && std::find(quoted.begin(), quoted.end(), text) == quoted.end()) {
      quoted.push_back(text);
    }
  }
  return listOf(quoted);
}

}  // namespace

std::string wordSentence(const Diagnostic& finding) {
  const KeyDescription* const key =
      finding.attribute == "value" ? describeSetting(*finding.element) : nullptr;
  if (key == nullptr || key->words == nullptr) {
    return "Must be " + quotedList({DIRECTIONS[0], DIRECTIONS[1], DIRECTIONS[2], DIRECTIONS[3]}) +
           "; the attribute is ignored.";
  }
  const auto& [trigger, opposite] = *key->words;
  const std::string must =
      "Must be " + quotedList({trigger[0], opposite[0], trigger[1], opposite[1]});
  return must + (key->rule == KeyRule::ONLY_RAISED
                     ? "; the value is ignored."
                     : "; it counts as " + quotedList({opposite[0]}) + '.');
}

std::string iriSentence(const Diagnostic& finding, std::string_view consequence) {
  const std::string_view value = StringUtil::trimmed(finding.value);
  const std::size_t forbidden = value.find_first_of("{}|\\^`<>\"");
  const std::string mistake =
      value.find(':') == std::string_view::npos
          ? "Must be a full address that begins with a scheme, such as https://..."
      : value.find(' ') != std::string_view::npos ? "An address must not contain blanks"
      : forbidden != std::string_view::npos
          ? std::string("\"") + value[forbidden] + "\" may not stand in an address"
          : "Not a valid address";
  return mistake + "; " + std::string(consequence) + '.';
}

std::string numberSentence(const Diagnostic& finding, std::string_view consequence) {
  const std::string value = StringUtil::squeezeAndTrim(finding.value);
  const KeyDescription* const key =
      finding.attribute == "value" ? describeSetting(*finding.element) : nullptr;
  const auto* const range =
      std::find_if(std::begin(RANGES), std::end(RANGES),
                   [&](const auto& row) { return key != nullptr && row.key == key->name; });
  const std::string end = "; " + std::string(consequence) + '.';
  if (value.empty()) {
    return "A number is needed" + end;
  }
  if (range != std::end(RANGES)) {
    return "Must be a number " + std::string(range->range) + end;
  }
  const bool isNumber = value.find_first_not_of("0123456789") == std::string::npos;
  if (isNumber && value.find_first_not_of('0') != std::string::npos) {
    return "The largest number is 4294967295" + end;
  }
  return (key == nullptr ? "Must be a number above 0" : "Must be a number") + end;
}

std::string partialSentence(const Diagnostic& finding) {
  const config::ValueKind kind = kindOfValue(*finding.element, finding.attribute);
  const std::string value = StringUtil::squeezeAndTrim(finding.value);
  const bool isTooLarge = value.find_first_not_of("0123456789") == std::string::npos;
  return "Read as " + usedNumber(kind, value) +
         (isTooLarge ? "; there is no larger number."
          : kind == config::ValueKind::DECIMAL
              ? "; write a number such as 1.5 (no unit or comma)."
              : "; write digits only (no unit, sign, comma or 0x).");
}

std::string suspiciousSentence(const Diagnostic& finding) {
  const auto advice = adviceOnValue(kindOfValue(*finding.element, finding.attribute),
                                    StringUtil::squeezeAndTrim(finding.value));
  return advice ? advice->sentence : "";
}

}  // namespace orvane::nimbrel::check
