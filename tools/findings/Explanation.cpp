#include "tools/findings/Explanation.h"

#include <algorithm>
#include <string_view>

#include "tools/output/Escape.h"

namespace orvane::nimbrel::tools {
namespace {

using check::CodeDescription;

std::string pad(std::string_view text, std::size_t width) {
  return std::string(text) + std::string(width - std::min(width, text.size()) + 2, ' ');
}

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

std::string examplesOf(const CodeDescription& kind) {
  std::string text = "Bad:\n\n    ";
  text.append(kind.bad);
  return kind.fixed.empty() ? text + "\n\nFixed: without it.\n"
                            : text.append("\n\nFixed:\n\n    ").append(kind.fixed) + '\n';
}

std::string explain(const CodeDescription& kind) {
  std::string text(kind.name);
  text.append(" (").append(check::levelName(kind.level)).append(")\n\n");
  return text.append(kind.summary).append("\n\n") + examplesOf(kind);
}

std::string listCodes() {
  std::size_t nameWidth = 0;
  std::size_t levelWidth = 0;
  for (const CodeDescription& kind : check::codeDescriptions()) {
    nameWidth = std::max(nameWidth, kind.name.size());
    levelWidth = std::max(levelWidth, check::levelName(kind.level).size());
  }
  std::string text;
  for (const CodeDescription& kind : check::codeDescriptions()) {
    text += pad(kind.name, nameWidth) + pad(check::levelName(kind.level), levelWidth);
    text.append(kind.summary) += '\n';
  }
  return text;
}

}  // namespace orvane::nimbrel::tools
