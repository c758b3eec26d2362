#include "tools/findings/FindingPrinter.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "tools/output/Output.h"

namespace orvane::nimbrel::tools {
namespace {

class SilentPrinter : public FindingPrinter {
 protected:
  void printDocument(const DocumentName& /*name*/, const check::Report& /*report*/) override {}
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
  for (const check::Kind& kind : check::kinds()) {
    codes_.push_back({&kind});
  }
}

void FindingPrinter::beginOnce() {
  if (!std::exchange(begun_, true)) {
    begin();
  }
}

void FindingPrinter::print(const DocumentName& name, const check::Report& report,
                           std::optional<std::size_t> fixed) {
  beginOnce();
  const std::size_t errors = counts_.errors;
  std::vector<bool> found(codes_.size());
  for (const check::Diagnostic& finding : report.findings()) {
    counts_.add(check::kindOf(finding.code).level);
    const auto code = static_cast<std::size_t>(finding.code);  // the order of the kinds
    ++codes_[code].findings;
    codes_[code].files += found[code] ? 0 : 1;
    found[code] = true;
  }
  ++files_.read;
  files_.rejected += counts_.errors == errors ? 0 : 1;
  fixedNow_ = fixed;
  if (fixed) {
    counts_.fixed = counts_.fixed.value_or(0) + *fixed;
  }
  printDocument(name, report);
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

std::unique_ptr<FindingPrinter> silentPrinter() {
  return std::make_unique<SilentPrinter>();
}

}  // namespace orvane::nimbrel::tools
