#pragma once

#include <memory>
#include <string>
#include <vector>

#include "config/FindingKind.h"
#include "config/ParseObserver.h"

namespace orvane::nimbrel::test {

/// Keeps what it is told, a line a finding:
/// "3 icon-without-src icon@src='x': An icon needs a path. -> suggestion".
class Findings : public config::ParseObserver {
 public:
  void onFinding(const config::Finding& /*finding*/) override {}
  void notice(const config::LegacyFinding& finding) override {
    std::string line = std::to_string(finding.line);
    line.append(" ").append(config::findingKind(finding.code).name);
    line.append(" ").append(finding.element);
    if (!finding.attribute.empty()) {
      line.append("@").append(finding.attribute);
    }
    if (finding.value.data() != nullptr) {
      line.append("='").append(finding.value).append("'");
    }
    line.append(": ").append(finding.reason);
    if (!finding.suggestion.empty()) {
      line.append(" -> ").append(finding.suggestion);
    }
    lines.push_back(line);
    codes.push_back(finding.code);
  }

  std::vector<std::string> lines;
  std::vector<config::LegacyCode> codes;
};

}  // namespace orvane::nimbrel::test
