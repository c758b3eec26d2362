#pragma once

#include <memory>
#include <string>
#include <vector>

#include "check/FindingCode.h"
#include "config/ParseObserver.h"

namespace orvane::nimbrel::test {

/// Keeps what a parser reports, a line a finding: "3 missing-attribute icon@src='x'".
class Findings : public config::ParseObserver {
 public:
  void onFinding(const config::Finding& finding) override {
    std::string line = std::to_string(finding.line);
    line.append(" ").append(check::descriptionOf(check::codeOf(finding.code)).name);
    line.append(" ").append(finding.element == nullptr ? "" : finding.element->nameView());
    if (finding.attribute != nullptr) {
      line.append("@").append(finding.attribute->isExtension ? "tavlo:" : "");
      line.append(finding.attribute->name);
    }
    if (finding.value.data() != nullptr) {
      line.append("='").append(finding.value).append("'");
    }
    line.append(finding.message.empty() ? "" : ": ").append(finding.message);
    lines.push_back(line);
  }

  std::vector<std::string> lines;
};

}  // namespace orvane::nimbrel::test
