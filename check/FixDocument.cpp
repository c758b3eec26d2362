#include "check/FixDocument.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "check/Check.h"
#include "check/Decoder.h"
#include "check/FixReview.h"

namespace orvane::nimbrel::check {
namespace {

/// The most that the fixes of one round are tried, of which some did harm: the harm of one fix may
/// hide that of the next, as a value that is rejected hides those of the other keys beside it.
constexpr int MAX_TRIES = 8;
/// Far more than any document takes.
constexpr int MAX_CHECKS = 100;

/// The edits of all fixes in the order of the document, each once.
std::vector<Edit> editsOf(const std::vector<Fix>& fixes) {
  std::vector<Edit> edits;
  for (const Fix& fix : fixes) {
    edits.insert(edits.end(), fix.edits.begin(), fix.edits.end());
  }
  const auto key = [](const Edit& edit) {
    return std::tie(edit.span.begin, edit.span.end, edit.text);
  };
  std::sort(edits.begin(), edits.end(),
            [&](const Edit& left, const Edit& right) { return key(left) < key(right); });
  edits.erase(
      std::unique(edits.begin(), edits.end(),
                  [&](const Edit& left, const Edit& right) { return key(left) == key(right); }),
      edits.end());
  return edits;
}

}  // namespace

std::optional<std::string> withFixes(const Report& report, const std::vector<Fix>& fixes) {
  const std::string& document = report.document();
  const std::optional<std::string> encoding = encodingOf(document);
  if (!encoding) {
    return std::nullopt;
  }
  const SourceText& source = report.source();
  std::string bytes;
  std::string text;  // in UTF-8
  std::size_t byte = 0;
  std::size_t at = 0;
  for (const Edit& edit : editsOf(fixes)) {
    const std::optional<std::string> replacement = encode(edit.text, *encoding);
    if (!replacement || edit.span.begin < at) {
      return std::nullopt;
    }
    const std::size_t begin = source.positionOf(edit.span.begin).byte;
    bytes.append(document, byte, begin - byte).append(*replacement);
    text.append(source.text(), at, edit.span.begin - at).append(edit.text);
    byte = source.positionOf(edit.span.end).byte;
    at = edit.span.end;
  }
  bytes.append(document, byte);
  text.append(source.text(), at);
  // In some encodings a byte means what the one before it says.
  return SourceText(bytes).text() == text ? std::optional(std::move(bytes)) : std::nullopt;
}

FixedDocument fixDocument(std::string document,
                          const std::optional<std::vector<std::string>>& locales,
                          std::uint32_t logMask,
                          const std::optional<std::vector<std::string>>& package) {
  FixedDocument fixed = {checkDocument(std::move(document), locales, logMask, package)};
  ExcludedFixes excluded;
  // Names bring attributes to light, these keys, these values: there are a handful of rounds.
  int tries = 0;
  for (int checks = 0; checks < MAX_CHECKS && tries < MAX_TRIES; ++checks) {
    std::vector<Fix> fixes = fixesOf(*fixed.report);
    fixes.erase(std::remove_if(fixes.begin(), fixes.end(),
                               [&](const Fix& fix) { return excluded.has(fix); }),
                fixes.end());
    std::optional<std::string> next =
        fixes.empty() ? std::nullopt : withFixes(*fixed.report, fixes);
    if (!next) {
      break;
    }
    auto report = checkDocument(std::move(*next), locales, logMask, package);
    ++tries;
    if (!FixReview(*fixed.report, fixes).exclude(*report, excluded)) {
      fixed.report = std::move(report);
      fixed.count += fixes.size();
      excluded = {};  // what was harmful once may be right now, as it would be in another run
      tries = 0;
    }
  }
  return fixed;
}

}  // namespace orvane::nimbrel::check
