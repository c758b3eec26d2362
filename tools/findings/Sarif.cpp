#include "tools/findings/Sarif.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "config/FindingKind.h"
#include "tools/findings/FindingText.h"

namespace orvane::nimbrel::tools {
namespace {

using config::FindingKind;

constexpr char SCHEMA[] =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";

/// A path as a URI: of the scheme "file" when it is absolute, else a relative reference.
std::string toUri(std::string_view path) {
  constexpr std::string_view KEPT =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  std::string uri = path.substr(0, 1) == "/" ? "file://" : "";
  for (const char c : path) {
    if (KEPT.find(c) != std::string_view::npos) {
      uri += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      uri += '%';
      uri += "0123456789ABCDEF"[byte >> 4];
      uri += "0123456789ABCDEF"[byte & 0xF];
    }
  }
  return uri;
}

Json ruleOf(const FindingKind& kind) {
  return {{"id", kind.name},
          {"shortDescription", {{"text", kind.summary}}},
          {"help", {{"text", std::string(kind.summary) + "\n\n" + examplesOf(kind)}}},
          {"defaultConfiguration", {{"level", config::findingLevelName(kind.level)}}}};
}

Json locationOf(const std::string& file, const CheckedFinding& finding) {
  Json location = {{"artifactLocation", {{"uri", toUri(file)}}}};
  if (finding.line != 0) {
    location["region"]["startLine"] = finding.line;
    if (finding.column != 0) {
      location["region"]["startColumn"] = finding.column;
    }
  }
  return {{"physicalLocation", std::move(location)}};
}

Json resultOf(const std::string& file, const CheckedFinding& finding,
              const std::vector<FindingKind>& kinds) {
  const auto kind = std::find_if(kinds.begin(), kinds.end(), [&](const FindingKind& candidate) {
    return candidate.code == finding.code;
  });
  return {{"ruleId", kind->name},
          {"ruleIndex", kind - kinds.begin()},
          {"level", config::findingLevelName(kind->level)},
          {"message", {{"text", sentenceOf(finding)}}},
          {"locations", Json::array({locationOf(file, finding)})}};
}

}  // namespace

Json findingsToSarif(const std::vector<CheckedDocument>& documents, bool complete) {
  const std::vector<FindingKind> kinds = config::findingKinds();
  Json rules = Json::array();
  for (const FindingKind& kind : kinds) {
    rules.push_back(ruleOf(kind));
  }
  Json results = Json::array();
  for (const CheckedDocument& document : documents) {
    for (const CheckedFinding& finding : document.findings) {
      results.push_back(resultOf(document.name, finding, kinds));
    }
  }
  const Json driver = {
      {"name", "nimbrel-config"}, {"version", NIMBREL_VERSION}, {"rules", std::move(rules)}};
  const Json run = {{"tool", {{"driver", driver}}},
                    {"invocations", Json::array({{{"executionSuccessful", complete}}})},
                    {"columnKind", "unicodeCodePoints"},
                    {"results", std::move(results)}};
  return {{"$schema", SCHEMA}, {"version", "2.1.0"}, {"runs", Json::array({run})}};
}

}  // namespace orvane::nimbrel::tools
