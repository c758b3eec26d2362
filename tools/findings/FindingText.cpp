#include "tools/findings/FindingText.h"

#include <algorithm>
#include <string_view>

#include "tools/Escape.h"
#include "tools/findings/SourceLine.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::tools {
namespace {

using config::FindingKind;
using config::FindingLevel;

constexpr std::size_t MAXIMUM_WIDTH = 60;  // of what a stranger wrote

constexpr char PLAIN[] = "\x1b[0m";

const char* colourOf(FindingLevel level) noexcept {
  switch (level) {
    case FindingLevel::ERROR:
      return "\x1b[1;31m";
    case FindingLevel::WARNING:
      return "\x1b[1;33m";
    case FindingLevel::NOTE:
      break;
  }
  return "\x1b[1;36m";
}

std::string shorten(std::string_view text) {
  const std::string_view start = firstCharacters(text, MAXIMUM_WIDTH);
  return start.size() == text.size() ? escape(text) : escape(start) + "...";
}

std::string quote(std::string_view text) {
  return '"' + shorten(text) + '"';
}

std::string placeOf(const std::string& file, const CheckedFinding& finding) {
  std::string place = escape(file);
  if (finding.line != 0) {
    place += ':' + std::to_string(finding.line);
    if (finding.column != 0) {
      place += ':' + std::to_string(finding.column);
    }
  }
  return place + ": ";
}

void appendCount(std::string& text, std::size_t count, const char* noun) {
  if (count != 0) {
    text += (text.empty() ? "" : ", ") + std::to_string(count) + noun + (count == 1 ? "" : "s");
  }
}

std::string pad(std::string_view text, std::size_t width) {
  return std::string(text) + std::string(width - std::min(width, text.size()) + 2, ' ');
}

void appendIndented(std::string& out, std::string_view text) {
  for (const std::string& line : zel::util::StringUtil::split(std::string(text), '\n')) {
    out += "    " + line + '\n';
  }
}

}  // namespace

void FindingCounts::add(const CheckedDocument& document) {
  for (const CheckedFinding& finding : document.findings) {
    const FindingLevel level = config::findingKind(finding.code).level;
    ++(level == FindingLevel::ERROR ? errors : level == FindingLevel::WARNING ? warnings : notes);
  }
}

std::string sentenceOf(const CheckedFinding& finding) {
  std::string text;
  if (!finding.element.empty()) {
    text += shorten(finding.element) + ": ";
  }
  if (!finding.attribute.empty()) {
    text += shorten(finding.attribute) + (finding.value ? "=" : ": ");
  }
  if (finding.value) {
    text += quote(*finding.value) + ": ";
  }
  text += escapeUnprintable(finding.reason);
  if (!finding.suggestion.empty()) {
    text += " Did you mean " + quote(finding.suggestion) + '?';
  }
  return text;
}

std::string findingsToText(const CheckedDocument& document, FindingStyle style) {
  const SourceText source(style.source ? document.bytes : std::string_view());
  std::string text;
  for (const CheckedFinding& finding : document.findings) {
    const FindingKind& kind = config::findingKind(finding.code);
    std::string level(config::findingLevelName(kind.level));
    if (style.colour) {
      level.insert(0, colourOf(kind.level)).append(PLAIN);
    }
    text += placeOf(document.name, finding) + level + ": " + sentenceOf(finding) + " [";
    text.append(kind.name).append("]\n");
    text += excerpt(source, finding);
  }
  return text;
}

std::string countsToText(const FindingCounts& counts) {
  std::string text;
  appendCount(text, counts.errors, " error");
  appendCount(text, counts.warnings, " warning");
  appendCount(text, counts.notes, " note");
  return (text.empty() ? "no findings" : text) + '\n';
}

std::string examplesOf(const FindingKind& kind) {
  std::string text = "Bad:\n\n";
  appendIndented(text, kind.bad);
  text += kind.mended.empty() ? "\nMended: without it.\n" : "\nMended:\n\n";
  appendIndented(text, kind.mended);
  return text;
}

std::string explain(const FindingKind& kind) {
  std::string text(kind.name);
  text.append(" (").append(config::findingLevelName(kind.level)).append(")\n\n");
  return text.append(kind.summary).append("\n\n") + examplesOf(kind);
}

std::string listCodes() {
  const std::vector<FindingKind> kinds = config::findingKinds();
  std::size_t nameWidth = 0;
  std::size_t levelWidth = 0;
  for (const FindingKind& kind : kinds) {
    nameWidth = std::max(nameWidth, kind.name.size());
    levelWidth = std::max(levelWidth, config::findingLevelName(kind.level).size());
  }
  std::string text;
  for (const FindingKind& kind : kinds) {
    text += pad(kind.name, nameWidth) + pad(config::findingLevelName(kind.level), levelWidth);
    text.append(kind.summary) += '\n';
  }
  return text;
}

}  // namespace orvane::nimbrel::tools
