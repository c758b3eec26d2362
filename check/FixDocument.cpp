#include <algorithm>
#include <functional>
#include <iterator>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "check/Decoder.h"
#include "check/FindingCode.h"
#include "check/Fix.h"

namespace orvane::nimbrel::check {
namespace {

/// Names bring attributes to light, these keys, these values: there are a handful.
constexpr int MAX_ROUNDS = 10;
/// How much of a document the tries of one round may read; few fixes ever do harm.
constexpr std::size_t MAX_READ = 0x200000;
constexpr std::size_t MIN_TRIES = 12;

/// What is wrong with which element. Elements keep their numbers, as no fix adds or removes one.
using Fault = std::tuple<FindingCode, std::uint32_t, std::string_view>;

Fault faultOf(const Diagnostic& finding) noexcept {
  return {finding.code, finding.elementNumber, finding.attribute};
}

bool isError(const Diagnostic& finding) noexcept {
  return descriptionOf(finding.code).level == Level::ERROR;
}

/// Whether fixes did harm: one leaves its own finding or gives another about the same, the parser
/// does not read the document any more, or something now stands twice or was not what was meant.
bool isWorse(const Report& before, const std::vector<Fix>& fixes, const Report& after) {
  constexpr FindingCode HARM[] = {FindingCode::REPEATED, FindingCode::UNUSED_SETTING,
                                  FindingCode::OTHER_LANGUAGE, FindingCode::UNUSED_LANGUAGE,
                                  FindingCode::NOT_AN_IRI};
  const auto placeOf = [](const Diagnostic& finding) {
    return std::pair(finding.elementNumber, finding.attribute);
  };
  const std::vector<Diagnostic>& findings = before.findings();
  const bool wasRejected = std::any_of(findings.begin(), findings.end(), isError);
  std::set<Fault> faults;
  std::set<std::pair<std::uint32_t, std::string_view>> fixed;
  std::set<std::uint32_t> named;  // elements that were not known
  std::transform(findings.begin(), findings.end(), std::inserter(faults, faults.end()), faultOf);
  for (const Fix& fix : fixes) {
    if (fix.isNamespace) {
      continue;  // the name may still be wrong
    }
    faults.erase(faultOf(*fix.finding));
    fixed.insert(placeOf(*fix.finding));
    if (fix.finding->code == FindingCode::UNKNOWN_ELEMENT) {
      named.insert(fix.finding->elementNumber);
    }
  }
  const auto isHarm = [&](const Diagnostic& finding) {
    if (faults.count(faultOf(finding)) != 0) {
      return false;
    }
    return fixed.count(placeOf(finding)) != 0 || (isError(finding) && !wasRejected) ||
           (finding.code == FindingCode::MISSING_ATTRIBUTE &&
            named.count(finding.elementNumber) != 0) ||
           std::find(std::begin(HARM), std::end(HARM), finding.code) != std::end(HARM);
  };
  return std::any_of(after.findings().begin(), after.findings().end(), isHarm);
}

/// Makes those of some fixes that do no harm.
class Trial {
 public:
  using Check = std::function<std::unique_ptr<const Report>(std::string)>;

  Trial(const Report& before, Check check)
      : before_(before),
        check_(std::move(check)),
        tries_(std::max(MIN_TRIES, MAX_READ / (before.document().size() + 1))) {}

  /// Makes all between `first` and `last`, or if the document then is worse those of each half. Of
  /// two that are in each other's way the first is made.
  void make(const Fix* first, const Fix* last) {
    if (first == last || tries_ == 0) {
      return;
    }
    --tries_;
    const std::size_t count = made_.size();
    made_.insert(made_.end(), first, last);
    std::optional<std::string> document = withFixes(before_, made_);
    auto report = document ? check_(std::move(*document)) : nullptr;
    if (report != nullptr && !isWorse(before_, made_, *report)) {
      after_ = std::move(report);
      return;
    }
    report.reset();
    made_.resize(count);
    // Those at one place are the same, such as one of a namespace.
    if (beginOf(*first) != beginOf(*(last - 1))) {
      const Fix* const middle = first + (last - first) / 2;
      make(first, middle);
      make(middle, last);
    }
  }

  /// How many were made; none when so many do harm that it is not known in time which.
  [[nodiscard]] std::size_t count() const noexcept { return tries_ == 0 ? 0 : made_.size(); }
  /// What is found in the document with these.
  std::unique_ptr<const Report> takeReport() noexcept { return std::move(after_); }

  static std::size_t beginOf(const Fix& fix) noexcept { return fix.edits.front().span.begin; }

 private:
  const Report& before_;
  Check check_;
  std::size_t tries_;
  std::vector<Fix> made_;
  std::unique_ptr<const Report> after_;
};

}  // namespace

std::optional<std::string> withFixes(const Report& report, const std::vector<Fix>& fixes) {
  const std::string& document = report.document();
  const std::optional<std::string> encoding = encodingOf(document);
  if (!encoding) {
    return std::nullopt;
  }
  std::set<std::tuple<std::size_t, std::size_t, std::string_view>> edits;  // each once
  for (const Fix& fix : fixes) {
    for (const Edit& edit : fix.edits) {
      edits.emplace(edit.span.begin, edit.span.end, edit.text);
    }
  }
  const SourceText& source = report.source();
  std::string bytes;
  std::string text;  // in UTF-8
  std::size_t byte = 0;
  std::size_t at = 0;
  for (const auto& [begin, end, written] : edits) {
    const std::optional<std::string> replacement = encode(std::string(written), *encoding);
    if (!replacement || begin < at) {
      return std::nullopt;
    }
    const std::size_t next = source.positionOf(begin).byte;
    bytes.append(document, byte, next - byte).append(*replacement);
    text.append(source.text(), at, begin - at).append(written);
    byte = source.positionOf(end).byte;
    at = end;
  }
  bytes.append(document, byte);
  text.append(source.text(), at);
  // In some encodings a byte means what the one before it says.
  return SourceText(bytes).text() == text ? std::optional(std::move(bytes)) : std::nullopt;
}

FixedDocument fixDocument(std::string document, const CheckSettings& settings) {
  const auto check = [&](std::string text) { return checkDocument(std::move(text), settings); };
  FixedDocument fixed = {check(std::move(document))};
  for (int round = 0; round < MAX_ROUNDS; ++round) {
    std::vector<Fix> fixes = fixesOf(*fixed.report);
    std::stable_sort(fixes.begin(), fixes.end(), [](const Fix& left, const Fix& right) {
      return Trial::beginOf(left) < Trial::beginOf(right);
    });
    Trial trial(*fixed.report, check);
    trial.make(fixes.data(), fixes.data() + fixes.size());
    if (trial.count() == 0) {
      break;
    }
    fixed.count += trial.count();
    fixed.report = trial.takeReport();
  }
  return fixed;
}

}  // namespace orvane::nimbrel::check
