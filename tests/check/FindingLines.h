#pragma once

#include <optional>
#include <string>
#include <vector>

#include "check/Check.h"
#include "check/FindingCode.h"
#include "check/Wording.h"
#include "tests/support/ConfigReader.h"

namespace orvane::nimbrel::check {

/// A whole document, behind "=" or by how it begins, or the children of a root in its second line;
/// "\n" is a line break.
inline std::string documentOf(const std::string& row) {
  const bool isWhole = row.substr(0, 7) == "<widget" || row.substr(0, 2) == "<?";
  std::string text = row.substr(0, 1) == "=" ? row.substr(1)
                     : isWhole               ? row
                                             : test::widget('\n' + row + '\n');
  for (std::size_t at = text.find("\\n"); at != std::string::npos; at = text.find("\\n", at)) {
    text.replace(at, 2, "\n");
  }
  return text;
}

/// One finding with its place, columns in code points: "2:7-11 not-a-number icon@width='x': Why. ->
/// suggestion". "?" stands for a column that is not known.
inline std::string lineOf(const Report& report, const Diagnostic& finding) {
  const Place place = report.placeOf(finding);
  const Wording wording = wordingOf(finding);
  std::string line = std::to_string(place.begin.line) + ':';
  line += place.begin.column == 0 ? "?" : std::to_string(place.begin.column);
  if (place.end.line == place.begin.line && place.end.column > place.begin.column) {
    line += '-' + std::to_string(place.end.column);
  } else if (place.end.line != 0 && place.end.line != place.begin.line) {
    line += '-' + std::to_string(place.end.line) + ':' + std::to_string(place.end.column);
  }
  line.append(" ").append(descriptionOf(finding.code).name).append(" ").append(wording.element);
  if (!wording.attribute.empty()) {
    line.append("@").append(wording.attribute);
  }
  if (wording.value.data() != nullptr) {
    line.append("='").append(wording.value).append("'");
  }
  line.append(": ").append(wording.sentence);
  return wording.suggestion.empty() ? line : line.append(" -> ").append(wording.suggestion);
}

/// All findings of a document, a line each.
inline std::vector<std::string> linesOf(
    const std::string& document,
    const std::optional<std::vector<std::string>>& locales = std::nullopt,
    const std::optional<PackageContents>& package = std::nullopt) {
  const auto report = checkDocument(document, {locales, 0, package});
  std::vector<std::string> lines;
  for (const Diagnostic& finding : report->findings()) {
    lines.push_back(lineOf(*report, finding));
  }
  return lines;
}

}  // namespace orvane::nimbrel::check
