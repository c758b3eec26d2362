#include "tools/fix/FixFile.h"

#include <utility>

#include "check/Decoder.h"
#include "check/SourceText.h"
#include "tools/Failure.h"
#include "tools/fix/ReplaceFile.h"
#include "tools/fix/UnifiedDiff.h"
#include "tools/output/Escape.h"

namespace orvane::nimbrel::tools {
namespace {

/// How often a file may change under our hands.
constexpr int MAX_ATTEMPTS = 3;

DocumentFailure unfixable(const std::string& path, const std::string& reason) {
  return {EXIT_UNUSABLE, path, {"cannot be fixed: " + reason}};
}

/// The lines of a text, each escaped.
std::string escapedLines(std::string_view text) {
  std::string escaped;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (!line.empty() && line.back() == '\r') {
      line.remove_suffix(1);
    }
    escaped += escapeUnprintable(line) + '\n';
  }
  return escaped;
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
    check::FixedDocument fixed = check::fixDocument(*document.bytes, settings);
    if (fixed.count == 0 || replaceFile(document.name, *document.bytes, fixed.report->document())) {
      return fixed;
    }
  }
  throw unfixable(path, "it keeps changing");
}

FixedWithDiff fixWithDiff(const Document& document, const check::CheckSettings& settings,
                          bool isForTerminal) {
  FixedWithDiff result = {check::fixDocument(*document.bytes, settings), {}};
  if (result.fixed.count == 0) {
    return result;
  }
  const check::Report& report = *result.fixed.report;
  const std::string name = escape(document.name);
  result.diff =
      check::encodingOf(report.document())->empty()
          ? unifiedDiff(name, *document.bytes, report.document())
          : unifiedDiff(name, check::SourceText(*document.bytes).text(), report.source().text());
  if (isForTerminal) {
    result.diff = escapedLines(result.diff);
  }
  return result;
}

}  // namespace orvane::nimbrel::tools
