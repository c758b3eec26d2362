#include "tools/findings/Explanation.h"

#include <algorithm>
#include <string_view>

namespace orvane::nimbrel::tools {
namespace {

using check::CodeDescription;

std::string pad(std::string_view text, std::size_t width) {
  return std::string(text) + std::string(width - std::min(width, text.size()) + 2, ' ');
}

}  // namespace

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
