#include "tools/findings/FindingPrinter.h"

#include <utility>

#include "check/Kind.h"

namespace orvane::nimbrel::tools {

void FindingPrinter::print(const std::string& name, const check::Report& report) {
  if (!std::exchange(begun_, true)) {
    begin();
  }
  for (const check::Diagnostic& finding : report.findings()) {
    switch (check::kindOf(finding.code).level) {
      case check::Level::ERROR:
        ++counts_.errors;
        break;
      case check::Level::WARNING:
        ++counts_.warnings;
        break;
      case check::Level::NOTE:
        ++counts_.notes;
        break;
    }
  }
  printDocument(name, report);
}

void FindingPrinter::finish(bool complete) {
  if (begun_) {
    end(complete);
  }
}

}  // namespace orvane::nimbrel::tools
