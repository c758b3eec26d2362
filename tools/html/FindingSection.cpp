#include "tools/html/FindingSection.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

#include "check/Kind.h"
#include "check/Wording.h"
#include "tools/findings/Excerpt.h"
#include "tools/findings/FindingPrinter.h"

namespace orvane::nimbrel::tools {
namespace {

using check::Level;

constexpr std::size_t MOST = 1000;   // findings on a page
constexpr std::size_t LONGEST = 60;  // characters of what the document says

FindingCounts countsOf(const check::Report& report) {
  FindingCounts counts;
  for (const check::Diagnostic& finding : report.findings()) {
    counts.add(check::kindOf(finding.code).level);
  }
  return counts;
}

/// The name of a level as the beginning of a sentence.
const char* titleOf(Level level) noexcept {
  return level == Level::ERROR ? "Error" : level == Level::WARNING ? "Warning" : "Note";
}

void printSource(HtmlWriter& html, const check::Report& report, const check::Diagnostic& finding) {
  const std::size_t line = report.placeOf(finding).begin.line;
  if (line == 0) {
    html.markup("<p class=\"source none\">");
    html.text(finding.isOfPackage ? "the package" : "the whole document");
    if (finding.isOfPackage && !finding.value.empty()) {
      html.markup(" <code><bdi>").text(finding.value, LONGEST).markup("</bdi></code>");
    }
    html.markup("</p>\n");
    return;
  }
  const ExcerptParts parts = excerptParts(report, finding);
  html.markup("<p class=\"source\"><span class=\"line\">line ").number(line).markup("</span> ");
  // Without the indentation, which only takes room here.
  const std::size_t indent = parts.before.find_first_not_of(' ');
  html.markup("<code dir=\"ltr\">")
      .text(parts.before.substr(std::min(indent, parts.before.size())));
  if (!parts.place.empty()) {
    html.markup("<mark>").text(parts.place).markup("</mark>");
  }
  html.text(parts.behind).markup("</code></p>\n");
}

void printFinding(HtmlWriter& html, const check::Report& report, const check::Diagnostic& finding) {
  const check::Kind& kind = check::kindOf(finding.code);
  const check::Wording wording = check::wordingOf(finding);
  html.markup("<li>\n");
  printSource(html, report, finding);
  html.markup("<div>\n<p><strong class=\"").text(check::levelName(kind.level)).markup("\">");
  html.text(titleOf(kind.level)).markup("</strong> ");
  if (!wording.element.empty()) {
    html.markup("<code><bdi>").text(wording.element, LONGEST).markup("</bdi></code> ");
  }
  if (!wording.attribute.empty()) {
    html.markup("<code><bdi>").text(wording.attribute, LONGEST).markup("</bdi></code> ");
  }
  html.markup("<span class=\"code\">").text(kind.name).markup("</span></p>\n<p>");
  html.text(wording.sentence);
  if (!wording.suggestion.empty()) {
    html.markup(" Did you mean <code><bdi>").text(wording.suggestion, LONGEST);
    html.markup("</bdi></code>?");
  }
  html.markup("</p>\n</div>\n</li>\n");
}

/// A text of ours with code between backticks.
void printProse(HtmlWriter& html, std::string_view text) {
  for (bool isCode = false;; isCode = !isCode) {
    const std::string_view part = text.substr(0, text.find('`'));
    if (isCode) {
      html.markup("<code>").text(part).markup("</code>");
    } else {
      html.text(part);
    }
    if (part.size() == text.size()) {
      return;
    }
    text.remove_prefix(part.size() + 1);
  }
}

/// What the codes that were found mean.
void printMeanings(HtmlWriter& html, const check::Report& report) {
  std::vector<bool> isFound(check::kinds().size());
  for (const check::Diagnostic& finding : report.findings()) {
    isFound[static_cast<std::size_t>(finding.code)] = true;  // the order of the kinds
  }
  html.markup("<details>\n<summary>What the codes mean</summary>\n<dl class=\"meanings\">\n");
  for (const check::Kind& kind : check::kinds()) {
    if (isFound[static_cast<std::size_t>(kind.code)]) {
      html.markup("<div><dt>").text(kind.name).markup("</dt><dd>");
      printProse(html, kind.summary);
      html.markup("</dd></div>\n");
    }
  }
  html.markup("</dl>\n</details>\n");
}

}  // namespace

void printFindingCounts(HtmlWriter& html, const check::Report& report) {
  const FindingCounts counts = countsOf(report);
  if (report.findings().empty()) {
    html.markup("no findings");
  }
  bool isFirst = true;
  const auto print = [&](std::size_t number, const char* noun) {
    if (number != 0) {
      html.text(isFirst ? "" : ", ").count(number, noun);
      isFirst = false;
    }
  };
  print(counts.errors, "error");
  print(counts.warnings, "warning");
  print(counts.notes, "note");
}

void printFindings(HtmlWriter& html, const check::Report& report) {
  if (report.findings().empty()) {
    html.markup("<p>The check found no mistake.</p>\n");
    return;
  }
  const FindingCounts counts = countsOf(report);
  // How many of each level are printed yet: no flood of notes hides a warning.
  FindingCounts left;
  left.errors = std::min(counts.errors, MOST);
  left.warnings = std::min(counts.warnings, MOST - left.errors);
  left.notes = std::min(counts.notes, MOST - left.errors - left.warnings);
  const std::size_t shown = left.errors + left.warnings + left.notes;
  if (shown < report.findings().size()) {
    html.markup("<p class=\"cut\">Not on this page: ")
        .count(report.findings().size() - shown, "more finding")
        .markup(". The most severe are shown; <code>nimbrel-config check</code> prints all.</p>\n");
  }
  html.markup("<ol class=\"findings\">\n");
  for (const check::Diagnostic& finding : report.findings()) {
    const Level level = check::kindOf(finding.code).level;
    std::size_t& more = level == Level::ERROR     ? left.errors
                        : level == Level::WARNING ? left.warnings
                                                  : left.notes;
    if (more != 0) {
      --more;
      printFinding(html, report, finding);
    }
  }
  html.markup("</ol>\n");
  printMeanings(html, report);
}

}  // namespace orvane::nimbrel::tools
