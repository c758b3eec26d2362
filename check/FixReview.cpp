#include "check/FixReview.h"

#include <algorithm>
#include <iterator>

#include "check/Kind.h"

namespace orvane::nimbrel::check {
namespace {

using config::FindingCode;

bool isError(const Diagnostic& finding) noexcept {
  return kindOf(finding.code).level == Level::ERROR;
}

/// What a fix must not bring about.
bool isHarm(FindingCode code) noexcept {
  constexpr FindingCode HARM[] = {FindingCode::REPEATED, FindingCode::UNUSED_SETTING,
                                  FindingCode::OTHER_LANGUAGE, FindingCode::UNUSED_LANGUAGE,
                                  FindingCode::NOT_AN_IRI};
  return std::find(std::begin(HARM), std::end(HARM), code) != std::end(HARM);
}

}  // namespace

bool ExcludedFixes::has(const Fix& fix) const {
  return fix.isNamespace ? namespaces : elements.count(fix.finding->elementNumber) != 0;
}

FixReview::Fault FixReview::faultOf(const Diagnostic& finding) noexcept {
  return {finding.code, finding.elementNumber, finding.attribute};
}

FixReview::FixReview(const Report& before, const std::vector<Fix>& fixes)
    : wasRejected_(std::any_of(before.findings().begin(), before.findings().end(), isError)) {
  for (const Diagnostic& finding : before.findings()) {
    faults_.insert(faultOf(finding));
    if (finding.code == FindingCode::NOT_READ) {
      stops_.emplace(finding.elementNumber, before.numberOf(finding.other));
    }
  }
  for (const Fix& fix : fixes) {
    const std::uint32_t number = fix.finding->elementNumber;
    fixed_.insert(faultOf(*fix.finding));
    hasNamespaces_ |= fix.isNamespace;
    if (fix.isNamespace) {
      continue;
    }
    touched_.insert(number);
    if (fix.finding->code == FindingCode::UNKNOWN_ELEMENT) {
      identified_.insert(number);
    }
    if (fix.finding->code == FindingCode::UNKNOWN_ELEMENT ||
        fix.finding->code == FindingCode::UNEXPECTED_CHILD) {
      renamed_.insert(number);
    }
  }
}

bool FixReview::exclude(const Report& after, ExcludedFixes& excluded) const {
  bool isAny = false;
  for (const Diagnostic& finding : after.findings()) {
    isAny |= judge(after, finding, excluded);
  }
  return isAny;
}

bool FixReview::judge(const Report& after, const Diagnostic& finding,
                      ExcludedFixes& excluded) const {
  const Fault fault = faultOf(finding);
  if (fixed_.count(fault) != 0) {
    return excludeElement(finding.elementNumber, excluded);
  }
  if (faults_.count(fault) != 0) {
    return false;
  }
  if (isError(finding) && !wasRejected_) {
    return excludeCause(after, finding, excluded);
  }
  if (finding.code == FindingCode::MISSING_ATTRIBUTE &&
      identified_.count(finding.elementNumber) != 0) {
    return excludeElement(finding.elementNumber, excluded);  // something else was meant
  }
  return isHarm(finding.code) && excludeEither(after, finding, excluded);
}

/// Of two elements in each other's way those whose names were fixed; else those with any fix.
bool FixReview::excludeEither(const Report& after, const Diagnostic& finding,
                              ExcludedFixes& excluded) const {
  const std::uint32_t numbers[] = {finding.elementNumber, after.numberOf(finding.other)};
  const auto isRenamed = [&](std::uint32_t number) { return renamed_.count(number) != 0; };
  const bool isAnyRenamed = std::any_of(std::begin(numbers), std::end(numbers), isRenamed);
  bool isAny = false;
  for (const std::uint32_t number : numbers) {
    isAny |= (!isAnyRenamed || isRenamed(number)) && excludeElement(number, excluded);
  }
  return isAny;
}

/// The nearest fix around an error, or the one that made it be read.
bool FixReview::excludeCause(const Report& after, const Diagnostic& error,
                             ExcludedFixes& excluded) const {
  for (const util::XmlNode* element = error.element; element != nullptr;
       element = element->parent()) {
    const std::uint32_t number = after.numberOf(element);
    const auto stop = stops_.find(number);
    if (excludeElement(number, excluded) ||
        (stop != stops_.end() && excludeElement(stop->second, excluded))) {
      return true;
    }
  }
  return excludeAll(excluded);
}

bool FixReview::excludeElement(std::uint32_t number, ExcludedFixes& excluded) const {
  const bool isTouched = touched_.count(number) != 0;
  if (isTouched) {
    excluded.elements.insert(number);
  }
  return isTouched;
}

/// Those of namespaces, which may do it anywhere, and if there are none all others.
bool FixReview::excludeAll(ExcludedFixes& excluded) const {
  if (hasNamespaces_) {
    return excluded.namespaces = true;
  }
  excluded.elements.insert(touched_.begin(), touched_.end());
  return true;
}

}  // namespace orvane::nimbrel::check
