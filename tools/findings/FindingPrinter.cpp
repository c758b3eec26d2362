#include "tools/findings/FindingPrinter.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "tools/findings/Explanation.h"
#include "tools/output/Output.h"

namespace orvane::nimbrel::tools {
namespace {

void appendCount(std::string& text, std::size_t count, const char* noun) {
  if (count != 0) {
    text += (text.empty() ? "" : ", ") + std::to_string(count) + noun + (count == 1 ? "" : "s");
  }
}

/// How often each code is found in all files.
class SummaryPrinter : public FindingPrinter {
 public:
  explicit SummaryPrinter(std::string format) : format_(std::move(format)) {}

  void finish() override { format_ == "text" ? printText() : printJson(); }

 private:
  void printText() const {
    std::string text = codes().empty() ? "" : "findings     files  level    code\n";
    for (const CodeCount& code : codes()) {
      char line[128];
      std::snprintf(line, sizeof(line), "%8zu  %8zu  %-7s  %s\n", code.findings, code.files,
                    check::levelName(code.kind->level).data(), code.kind->name.data());
      text += line;
    }
    text += std::to_string(files().read + files().unreadable) + " files, " +
            std::to_string(files().rejected) + " rejected, " + std::to_string(files().unreadable) +
            " unreadable; " + counts().text() + '\n';
    writeOutput(text);
  }

  void printJson() const {
    JsonWriter json(format_ == "jsonl" ? JsonWriter::Layout::LINE : JsonWriter::Layout::INDENTED);
    json.object([&] {
      json.member("files", files().read + files().unreadable);
      json.member("rejected", files().rejected);
      json.member("unreadable", files().unreadable);
      counts().write(json);
      json.list("codes", [&] {
        for (const CodeCount& code : codes()) {
          json.object([&] {
            json.member("code", code.kind->name);
            json.member("level", check::levelName(code.kind->level));
            json.member("findings", code.findings);
            json.member("files", code.files);
          });
        }
      });
    });
    json.finish();
  }

  std::string format_;
};

}  // namespace

void FindingCounts::add(check::Level level) noexcept {
  ++(level == check::Level::ERROR ? errors : level == check::Level::WARNING ? warnings : notes);
}

std::string FindingCounts::text() const {
  std::string text;
  appendCount(text, errors, " error");
  appendCount(text, warnings, " warning");
  appendCount(text, notes, " note");
  return (fixed ? std::to_string(*fixed) + " fixed; " : "") + (text.empty() ? "no findings" : text);
}

void FindingCounts::write(JsonWriter& json) const {
  json.member("errors", errors);
  json.member("warnings", warnings);
  json.member("notes", notes);
  if (fixed) {
    json.member("fixed", *fixed);
  }
}

FindingPrinter::FindingPrinter() {
  for (const check::CodeDescription& kind : check::codeDescriptions()) {
    codes_.push_back({&kind});
  }
}

void FindingPrinter::print(const CheckedDocument& document) {
  FindingCounts own;
  own.fixed = document.fixed;
  std::vector<bool> found(codes_.size());
  for (const check::Diagnostic& finding : document.report->findings()) {
    const check::Level level = check::descriptionOf(finding.code).level;
    own.add(level);
    counts_.add(level);
    const auto code = static_cast<std::size_t>(finding.code);  // the order of the kinds
    ++codes_[code].findings;
    codes_[code].files += found[code] ? 0 : 1;
    found[code] = true;
  }
  ++files_.read;
  files_.rejected += own.errors == 0 ? 0 : 1;
  if (own.fixed) {
    counts_.fixed = counts_.fixed.value_or(0) + *own.fixed;
  }
  printDocument(document, own);
}

void FindingPrinter::printUnreadable(const std::string& file, const DocumentFailure& failure) {
  ++files_.unreadable;
  writeError(failure.what());
  printFailure(file, failure);
}

std::vector<FindingPrinter::CodeCount> FindingPrinter::codes() const {
  std::vector<CodeCount> codes;
  std::copy_if(codes_.begin(), codes_.end(), std::back_inserter(codes),
               [](const CodeCount& code) { return code.findings != 0; });
  return codes;
}

std::unique_ptr<const check::Report> reportOf(const DocumentFailure& failure) {
  const DocumentFailure::Problem& problem = failure.problem();
  auto report = std::make_unique<check::Report>("");
  report->reject(problem.reason, problem.line, problem.column, std::nullopt,
                 problem.code.value_or(check::FindingCode::DOCUMENT_REJECTED));
  return report;
}

DocumentFailure explained(const DocumentFailure& failure, const std::string& name,
                          const check::Report& report) {
  for (const check::Diagnostic& finding : report.findings()) {
    if (const ShownFinding shown = {report, finding}; shown.kind.level == check::Level::ERROR) {
      const check::Position& place = shown.place.begin;
      return {failure.status(),
              name,
              {sentenceOf(shown.wording), place.line, place.column, finding.code}};
    }
  }
  return failure;
}

std::unique_ptr<FindingPrinter> makePrinter(const FindingStyle& style) {
  const std::string& format = style.format;
  auto printer = format.empty()      ? std::make_unique<FindingPrinter>()
                 : style.summary     ? std::make_unique<SummaryPrinter>(format)
                 : format == "text"  ? makeTextPrinter(style)
                 : format == "sarif" ? makeSarifPrinter()
                                     : makeJsonPrinter(format == "jsonl");
  printer->begin();
  return printer;
}

}  // namespace orvane::nimbrel::tools
