#include "tools/findings/Sentence.h"

#include <string_view>

#include "tools/output/Escape.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::size_t MAXIMUM_WIDTH = 60;  // of what the document says

std::string shorten(std::string_view text) {
  const std::string_view start = firstCharacters(text, MAXIMUM_WIDTH);
  return start.size() == text.size() ? escape(text) : escape(start) + "...";
}

std::string quote(std::string_view text) {
  return '"' + shorten(text) + '"';
}

}  // namespace

std::string sentenceOf(const check::Wording& wording) {
  std::string text;
  if (!wording.element.empty()) {
    text += shorten(wording.element) + ": ";
  }
  const bool hasValue = wording.value.data() != nullptr;
  if (!wording.attribute.empty()) {
    text += shorten(wording.attribute) + (hasValue ? "=" : ": ");
  }
  if (hasValue) {
    text += quote(wording.value) + ": ";
  }
  text += escapeUnprintable(wording.sentence);
  if (!wording.suggestion.empty()) {
    text += " Did you mean " + quote(wording.suggestion) + '?';
  }
  return text;
}

}  // namespace orvane::nimbrel::tools
