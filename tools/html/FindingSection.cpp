#include "tools/html/FindingSection.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "check/FindingCode.h"
#include "check/Wording.h"
#include "tools/findings/Excerpt.h"
#include "tools/findings/Explanation.h"
#include "tools/findings/FindingPrinter.h"

namespace orvane::nimbrel::tools {
namespace {

using check::Level;

constexpr std::size_t MOST_FINDINGS = 1000;  // findings on a page
constexpr std::size_t LONGEST_VALUE = 60;    // characters of what the document says

/// The name of a level as the beginning of a sentence.
const char* titleOf(Level level) noexcept {
  return level == Level::ERROR ? "Error" : level == Level::WARNING ? "Warning" : "Note";
}

std::size_t numberOf(const check::Report& report, const check::Diagnostic& finding) noexcept {
  return static_cast<std::size_t>(&finding - report.findings().data());
}

/// A finding on the page.
struct Row {
  const check::Diagnostic* finding;
  std::size_t line;
  Level level;
  ExcerptParts source = {};

  [[nodiscard]] std::string whole() const { return source.before + source.place + source.behind; }
};

/// The findings that are printed, in that order. No flood of notes hides a warning.
std::vector<Row> rowsOf(const check::Report& report) {
  std::vector<Row> rows;
  for (const Level level : {Level::ERROR, Level::WARNING, Level::NOTE}) {
    for (const check::Diagnostic& finding : report.findings()) {
      if (rows.size() < MOST_FINDINGS && check::descriptionOf(finding.code).level == level) {
        rows.push_back({&finding, report.placeOf(finding).begin.line, level});
      }
    }
  }
  std::map<std::size_t, Level> worst;  // by line
  for (Row& row : rows) {
    worst.try_emplace(row.line, row.level);
    row.source = excerptParts(report, *row.finding);
  }
  std::stable_sort(rows.begin(), rows.end(), [&](const Row& one, const Row& other) {
    return std::tuple(worst[other.line], one.line) < std::tuple(worst[one.line], other.line);
  });
  return rows;
}

using Rows = std::vector<Row>::const_iterator;

/// The line of some findings, with their places.
void printSource(HtmlWriter& html, Rows first, Rows last) {
  if (first->line == 0) {
    const check::Diagnostic& finding = *first->finding;
    html.markup("<p class=\"source none\">");
    html.text(finding.isOfPackage ? "the package" : "the whole document");
    if (finding.isOfPackage && !finding.value.empty()) {
      html.markup(" <code>").value(finding.value, LONGEST_VALUE).markup("</code>");
    }
    html.markup("</p>\n");
    return;
  }
  const std::string whole = first->whole();
  std::set<std::pair<std::size_t, std::size_t>> places;
  for (Rows row = first; row != last; ++row) {
    const std::size_t begin = row->source.before.size();
    places.emplace(begin, begin + row->source.place.size());
  }
  html.markup("<p class=\"source\"><span class=\"line\">line ").number(first->line);
  html.markup("</span> <code dir=\"ltr\">");
  // Without the indentation, which only takes room here.
  std::size_t at = std::min(whole.find_first_not_of(' '), whole.size());
  for (const auto& [begin, end] : places) {
    if (begin >= at && begin < end) {
      html.text(std::string_view(whole).substr(at, begin - at)).markup("<mark>");
      html.text(std::string_view(whole).substr(begin, end - begin)).markup("</mark>");
      at = end;
    }
  }
  html.text(std::string_view(whole).substr(at)).markup("</code></p>\n");
}

void printFinding(HtmlWriter& html, const check::Report& report, const Row& row) {
  const check::CodeDescription& kind = check::descriptionOf(row.finding->code);
  const check::Wording wording = check::wordingOf(*row.finding);
  html.markup("<div class=\"finding\"");
  if (row.level == Level::ERROR) {
    html.markup(" id=\"error-").number(numberOf(report, *row.finding)).markup("\"");
  }
  html.markup(">\n<p><strong class=\"").text(check::levelName(row.level)).markup("\">");
  html.text(titleOf(row.level)).markup("</strong> ");
  for (const std::string& name : {wording.element, wording.attribute}) {
    if (!name.empty()) {
      html.markup("<code>").value(name, LONGEST_VALUE).markup("</code> ");
    }
  }
  html.markup("<a class=\"code\" href=\"#code-").text(kind.name).markup("\">");
  html.text(kind.name).markup("</a></p>\n<p>").text(wording.sentence);
  if (!wording.suggestion.empty()) {
    html.markup(" Did you mean <code>").value(wording.suggestion, LONGEST_VALUE).markup("</code>?");
  }
  html.markup("</p>\n</div>\n");
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

/// What the codes on the page mean.
void printMeanings(HtmlWriter& html, const std::vector<Row>& rows) {
  std::set<check::FindingCode> codes;
  for (const Row& row : rows) {
    codes.insert(row.finding->code);
  }
  html.markup("<h3>What the codes mean</h3>\n<dl class=\"meanings\">\n");
  for (const check::FindingCode code : codes) {
    const check::CodeDescription& kind = check::descriptionOf(code);
    html.markup("<div id=\"code-").text(kind.name).markup("\"><dt>").text(kind.name);
    html.markup("</dt><dd>");
    printProse(html, kind.summary);
    html.markup("\n<details><summary>Example</summary>\n<pre><code dir=\"ltr\">");
    html.text(examplesOf(kind)).markup("</code></pre>\n</details></dd></div>\n");
  }
  html.markup("</dl>\n");
}

}  // namespace

void printVerdict(HtmlWriter& html, const check::Report& report, bool isRejected,
                  bool hasRejected) {
  FindingCounts counts;
  for (const check::Diagnostic& finding : report.findings()) {
    counts.add(check::descriptionOf(finding.code).level);
  }
  if (isRejected || hasRejected || counts.errors != 0) {
    html.markup("<strong class=\"error\">");
    html.text(isRejected ? "Rejected" : "Rejected for some users");
  } else if (counts.warnings != 0) {
    html.markup("<strong class=\"warning\">Accepted with warnings");
  } else {
    html.markup("<strong class=\"fine\">No errors or warnings");
  }
  html.markup("</strong>");
  if (counts.all() != 0) {
    html.markup(" <a href=\"#findings\">").text(counts.text()).markup("</a>");
  }
}

void printErrorLink(HtmlWriter& html, const check::Report& report, std::size_t line) {
  const check::Diagnostic* found = nullptr;
  std::size_t errors = 0;
  for (const check::Diagnostic& finding : report.findings()) {
    const bool isOfLine = report.placeOf(finding).begin.line == line;
    if (check::descriptionOf(finding.code).level == Level::ERROR &&
        errors++ < MOST_FINDINGS &&  // is printed
        (found == nullptr || (isOfLine && report.placeOf(*found).begin.line != line))) {
      found = &finding;
    }
  }
  if (found == nullptr) {
    html.markup("<a href=\"#findings\">the check says why</a>");
    return;
  }
  html.markup("<a href=\"#error-").number(numberOf(report, *found)).markup("\">");
  if (const std::size_t place = report.placeOf(*found).begin.line; place != 0) {
    html.markup("line ").number(place).markup(": ");
  }
  html.text(check::descriptionOf(found->code).name).markup("</a>");
}

void printFindings(HtmlWriter& html, const check::Report& report) {
  if (report.findings().empty()) {
    html.markup("<p>The check found no mistake.</p>\n");
    return;
  }
  const std::vector<Row> rows = rowsOf(report);
  if (rows.size() < report.findings().size()) {
    html.markup("<p class=\"cut\">Not on this page: ")
        .count(report.findings().size() - rows.size(), "more finding")
        .markup(". The most severe are shown; <code>nimbrel-config check</code> prints all.</p>\n");
  }
  html.markup("<ol class=\"findings\">\n");
  for (Rows row = rows.begin(); row != rows.end();) {
    const Rows first = row;
    row = std::find_if(first + 1, rows.end(), [&](const Row& next) {
      return next.line == 0 || next.line != first->line || next.whole() != first->whole();
    });
    html.markup("<li>\n");
    printSource(html, first, row);
    html.markup("<div>\n");
    std::for_each(first, row, [&](const Row& finding) { printFinding(html, report, finding); });
    html.markup("</div>\n</li>\n");
  }
  html.markup("</ol>\n");
  printMeanings(html, rows);
}

}  // namespace orvane::nimbrel::tools
