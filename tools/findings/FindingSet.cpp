#include "tools/findings/FindingSet.h"

#include <algorithm>
#include <set>
#include <string>
#include <tuple>
#include <utility>

#include "config/FindingKind.h"

namespace orvane::nimbrel::tools {
namespace {

using config::FindingLevel;
using config::LegacyCode;

auto keyOf(const CheckedFinding& finding) {
  return std::tie(finding.line, finding.column, finding.code, finding.element, finding.attribute,
                  finding.value, finding.reason, finding.suggestion);
}

/// Whether it tells of the user's languages, so that another user may get the element.
bool isOfLanguage(LegacyCode code) noexcept {
  return code == LegacyCode::LANGUAGE_LOST || code == LegacyCode::OTHER_LANGUAGE ||
         code == LegacyCode::BETTER_LANGUAGE;
}

}  // namespace

bool FindingSet::Less::operator()(const CheckedFinding& left, const CheckedFinding& right) const {
  return keyOf(left) < keyOf(right);
}

void FindingSet::notice(const config::LegacyFinding& finding) {
  add({finding.code, std::string(finding.element), std::string(finding.attribute), finding.line,
       finding.column,
       finding.value.data() == nullptr ? std::nullopt
                                       : std::optional<std::string>(std::string(finding.value)),
       std::string(finding.reason), std::string(finding.suggestion)});
}

void FindingSet::add(CheckedFinding finding) {
  current_.push_back(std::move(finding));
}

bool FindingSet::hasError() const {
  return std::any_of(current_.begin(), current_.end(), [](const CheckedFinding& finding) {
    return config::findingKind(finding.code).level == FindingLevel::ERROR;
  });
}

void FindingSet::endRun(bool refused) {
  ++runs_;
  completeRuns_ += refused ? 0 : 1;
  std::set<const Occurrence*> counted;
  for (CheckedFinding& finding : current_) {
    Occurrence& occurrence =
        merged_.try_emplace(std::move(finding), Occurrence{merged_.size()}).first->second;
    if (counted.insert(&occurrence).second) {
      ++occurrence.runs;
      occurrence.completeRuns += refused ? 0 : 1;
    }
  }
  current_.clear();
}

bool FindingSet::isKept(LegacyCode code, const Occurrence& occurrence) const {
  if (isOfLanguage(code)) {
    return occurrence.runs == runs_;
  }
  if (config::findingKind(code).level != FindingLevel::NOTE) {
    return true;
  }
  // A parse that was refused saw a part of the document only: what it did not find means nothing.
  return completeRuns_ == 0 ? occurrence.runs == runs_ : occurrence.completeRuns == completeRuns_;
}

std::vector<CheckedFinding> FindingSet::take() {
  std::vector<std::pair<Occurrence, CheckedFinding>> kept;
  while (!merged_.empty()) {
    auto entry = merged_.extract(merged_.begin());
    if (isKept(entry.key().code, entry.mapped())) {
      kept.emplace_back(entry.mapped(), std::move(entry.key()));
    }
  }
  const auto order = [](const auto& entry) {
    return std::make_pair(entry.second.line, entry.first.place);
  };
  std::sort(kept.begin(), kept.end(),
            [&](const auto& left, const auto& right) { return order(left) < order(right); });
  std::vector<CheckedFinding> findings;
  findings.reserve(kept.size());
  for (auto& entry : kept) {
    findings.push_back(std::move(entry.second));
  }
  return findings;
}

}  // namespace orvane::nimbrel::tools
