#include "tools/findings/FindingJson.h"

#include <cstdint>
#include <string>
#include <utility>

#include "config/FindingKind.h"

namespace orvane::nimbrel::tools {
namespace {

Json textOrNull(const std::string& text) {
  return text.empty() ? Json() : Json(text);
}

Json numberOrNull(std::uint32_t number) {
  return number == 0 ? Json() : Json(number);
}

Json toJson(const CheckedFinding& finding) {
  const config::FindingKind& kind = config::findingKind(finding.code);
  return {{"code", kind.name},
          {"level", config::findingLevelName(kind.level)},
          {"line", numberOrNull(finding.line)},
          {"column", numberOrNull(finding.column)},
          {"element", textOrNull(finding.element)},
          {"attribute", textOrNull(finding.attribute)},
          {"value", finding.value ? Json(*finding.value) : Json()},
          {"reason", finding.reason},
          {"suggestion", textOrNull(finding.suggestion)}};
}

}  // namespace

Json findingsToJson(const std::vector<CheckedDocument>& documents, const FindingCounts& counts) {
  Json files = Json::array();
  for (const CheckedDocument& document : documents) {
    Json findings = Json::array();
    for (const CheckedFinding& finding : document.findings) {
      findings.push_back(toJson(finding));
    }
    files.push_back({{"file", document.name}, {"findings", std::move(findings)}});
  }
  return {{"files", std::move(files)},
          {"errors", counts.errors},
          {"warnings", counts.warnings},
          {"notes", counts.notes}};
}

}  // namespace orvane::nimbrel::tools
