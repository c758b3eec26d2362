#include "tools/fix/UnifiedDiff.h"

#include <algorithm>
#include <vector>

namespace orvane::nimbrel::tools {
namespace {

constexpr std::size_t CONTEXT = 3;

/// Lines with their ends.
std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
    lines.push_back(text.substr(0, size));
    text.remove_prefix(size);
  }
  return lines;
}

void append(std::string& diff, char mark, std::string_view line) {
  diff.append(1, mark).append(line);
  if (line.back() != '\n') {
    diff += "\n\\ No newline at end of file\n";
  }
}

}  // namespace

std::string unifiedDiff(const std::string& name, std::string_view before, std::string_view after) {
  const std::vector<std::string_view> old = linesOf(before);
  const std::vector<std::string_view> now = linesOf(after);
  const auto isChanged = [&](std::size_t line) { return old[line] != now[line]; };
  const auto nextChange = [&](std::size_t line) {
    while (line < old.size() && !isChanged(line)) {
      ++line;
    }
    return line;
  };
  std::string diff;
  for (std::size_t change = nextChange(0); change < old.size();) {
    const std::size_t begin = change - std::min(change, CONTEXT);
    std::size_t end = change;
    // Changes whose context meets share a hunk.
    while (change < old.size() && change < end + 2 * CONTEXT + 1) {
      end = change + 1;
      change = nextChange(end);
    }
    end = std::min(end + CONTEXT, old.size());
    const std::string range = std::to_string(begin + 1) + ',' + std::to_string(end - begin);
    if (diff.empty()) {
      diff.append("--- ").append(name).append("\n+++ ").append(name).append("\n");
    }
    diff.append("@@ -").append(range).append(" +").append(range).append(" @@\n");
    for (std::size_t line = begin; line < end;) {
      const std::size_t first = line;
      for (; line < end && isChanged(line); ++line) {
        append(diff, '-', old[line]);
      }
      for (std::size_t i = first; i < line; ++i) {
        append(diff, '+', now[i]);
      }
      if (line < end && line == first) {
        append(diff, ' ', old[line++]);
      }
    }
  }
  return diff;
}

}  // namespace orvane::nimbrel::tools
