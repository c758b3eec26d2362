#include "config/Words.h"

#include "config/Suggestion.h"

namespace orvane::nimbrel::config::detail {

bool isOn(const Words& words, const std::string& value, const Report& lost) {
  const auto isAmong = [&](const std::string_view(&list)[2]) {
    return value == list[0] || value == list[1];
  };
  if (isAmong(words.on)) {
    return true;
  }
  if (lost && !isAmong(words.off)) {
    lost(LegacyCode::UNKNOWN_WORD, "value", value, words.reason,
         suggestedWord(value, words.on[0], words.off[0]));
  }
  return false;
}

}  // namespace orvane::nimbrel::config::detail
