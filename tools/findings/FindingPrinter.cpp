#include "tools/findings/FindingPrinter.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "tools/output/Output.h"

namespace orvane::nimbrel::tools {
namespace {

class SilentPrinter : public FindingPrinter {
 protected:
  void printDocument(const CheckedDocument& /*document*/) override {}
  void end() override {}
};

}  // namespace

void FindingCounts::add(check::Level level) noexcept {
  switch (level) {
    case check::Level::ERROR:
      ++errors;
      break;
    case check::Level::WARNING:
      ++warnings;
      break;
    case check::Level::NOTE:
      ++notes;
      break;
  }
}

FindingPrinter::FindingPrinter() {
  for (const check::CodeDescription& kind : check::codeDescriptions()) {
    codes_.push_back({&kind});
  }
}

void FindingPrinter::beginOnce() {
  if (!std::exchange(begun_, true)) {
    begin();
  }
}

void FindingPrinter::print(const CheckedDocument& document) {
  beginOnce();
  const std::size_t errors = counts_.errors;
  std::vector<bool> found(codes_.size());
  for (const check::Diagnostic& finding : document.report->findings()) {
    counts_.add(check::descriptionOf(finding.code).level);
    const auto code = static_cast<std::size_t>(finding.code);  // the order of the kinds
    ++codes_[code].findings;
    codes_[code].files += found[code] ? 0 : 1;
    found[code] = true;
  }
  ++files_.read;
  files_.rejected += counts_.errors == errors ? 0 : 1;
  if (document.fixed) {
    counts_.fixed = counts_.fixed.value_or(0) + *document.fixed;
  }
  printDocument(document);
}

void FindingPrinter::printUnreadable(const std::string& file, const DocumentFailure& failure) {
  beginOnce();
  ++files_.unreadable;
  writeError(failure.what());
  printFailure(file, failure);
}

void FindingPrinter::finish() {
  beginOnce();
  end();
}

std::vector<CodeCount> FindingPrinter::codes() const {
  std::vector<CodeCount> codes;
  std::copy_if(codes_.begin(), codes_.end(), std::back_inserter(codes),
               [](const CodeCount& code) { return code.findings != 0; });
  return codes;
}

std::unique_ptr<const check::Report> reportOf(const DocumentFailure& failure) {
  const DocumentFailure::Problem& problem = failure.problem();
  auto report = std::make_unique<check::Report>("");
  report->reject(problem.reason, problem.line, problem.column);
  return report;
}

std::unique_ptr<FindingPrinter> makePrinter(const FindingStyle& style) {
  switch (style.format) {
    case FindingStyle::Format::TEXT:
      return makeTextPrinter(style);
    case FindingStyle::Format::JSON:
    case FindingStyle::Format::JSON_LINES:
      return makeJsonPrinter(style);
    case FindingStyle::Format::SARIF:
      return makeSarifPrinter();
    case FindingStyle::Format::NOTHING:
      break;
  }
  return std::make_unique<SilentPrinter>();
}

}  // namespace orvane::nimbrel::tools
