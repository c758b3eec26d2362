#include "tools/fix/FixFile.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "check/Decoder.h"
#include "check/SourceText.h"
#include "tools/Failure.h"
#include "tools/fix/ReplaceFile.h"
#include "tools/output/Escape.h"

namespace orvane::nimbrel::tools {
namespace {

/// How often a file may change under our hands.
constexpr int MAX_ATTEMPTS = 3;

DocumentFailure unfixable(const std::string& path, const std::string& reason) {
  return {EXIT_UNUSABLE, path, {"cannot be fixed: " + reason}};
}

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

/// The lines of a text, each escaped.
std::string escapedLines(const std::string& text) {
  std::string escaped;
  for (std::string_view line : linesOf(text)) {
    line = line.substr(0, line.find_last_not_of("\r\n") + 1);
    escaped += escapeUnprintable(line) + '\n';
  }
  return escaped;
}

void append(std::string& diff, char mark, std::string_view line) {
  diff.append(1, mark).append(line);
  if (line.back() != '\n') {
    diff += "\n\\ No newline at end of file\n";
  }
}

/// What was changed within the lines of a text, as `diff -u` prints it and `patch` reads it, with
/// three lines around each change; empty when nothing was. Both texts have as many lines. `name` is
/// that of either, escaped already. Throws only `std::bad_alloc`.
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

}  // namespace

check::FixedDocument fixFile(const std::string& path, check::CheckSettings settings,
                             bool isUnpacked) {
  if (path == STANDARD_INPUT) {
    throw unfixable(path, "standard input is no file");
  }
  for (int attempt = 0; attempt < MAX_ATTEMPTS; ++attempt) {
    Document document = readDocument(path, path, isUnpacked);
    if (document.package != nullptr) {
      throw unfixable(path, "a package; fix its document and pack it again");
    }
    settings.package = document.contents();
    check::FixedDocument fixed = check::fixDocument(document.bytes, settings);
    if (fixed.count == 0 || replaceFile(document.name, document.bytes, fixed.report->document())) {
      return fixed;
    }
  }
  throw unfixable(path, "it keeps changing");
}

FixedWithDiff fixWithDiff(const Document& document, const check::CheckSettings& settings,
                          bool isForTerminal) {
  FixedWithDiff result = {check::fixDocument(document.bytes, settings), {}};
  if (result.fixed.count == 0) {
    return result;
  }
  const check::Report& report = *result.fixed.report;
  const std::string name = escape(document.name);
  result.diff =
      check::encodingOf(report.document())->empty()
          ? unifiedDiff(name, document.bytes, report.document())
          : unifiedDiff(name, check::SourceText(document.bytes).text(), report.source().text());
  if (isForTerminal) {
    result.diff = escapedLines(result.diff);
  }
  return result;
}

}  // namespace orvane::nimbrel::tools
