#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string_view>
#include <tuple>
#include <vector>

#include "check/Fix.h"
#include "check/Report.h"

namespace orvane::nimbrel::check {

/// Fixes that must not be made, because of what came of them.
struct ExcludedFixes {
  std::set<std::uint32_t> elements;  ///< of elements with these numbers
  bool namespaces = false;           ///< of namespaces

  [[nodiscard]] bool has(const Fix& fix) const;
};

/// Compares what is found in a document before and after some fixes. Elements keep their numbers,
/// as no fix adds or removes one.
class FixReview {
 public:
  /// Keeps nothing of the fixes, and of the report views: it has to live as long.
  FixReview(const Report& before, const std::vector<Fix>& fixes);

  /// Adds to `excluded` the fixes that did harm, at least one of those that were made; false when
  /// none did. Harm is a fix that leaves its own finding, something that now stands twice, a value
  /// that is rejected where it stands now, or a document that the parser does not read any more.
  [[nodiscard]] bool exclude(const Report& after, ExcludedFixes& excluded) const;

 private:
  /// What is wrong with which element.
  using Fault = std::tuple<config::FindingCode, std::uint32_t, std::string_view>;

  static Fault faultOf(const Diagnostic& finding) noexcept;
  bool judge(const Report& after, const Diagnostic& finding, ExcludedFixes& excluded) const;
  bool excludeEither(const Report& after, const Diagnostic& finding, ExcludedFixes& excluded) const;
  bool excludeCause(const Report& after, const Diagnostic& error, ExcludedFixes& excluded) const;
  bool excludeElement(std::uint32_t number, ExcludedFixes& excluded) const;
  bool excludeAll(ExcludedFixes& excluded) const;

  std::set<Fault> faults_;
  bool wasRejected_;
  std::map<std::uint32_t, std::uint32_t> stops_;  // of elements not read, what stopped reading
  std::set<Fault> fixed_;
  std::set<std::uint32_t> touched_;  // elements
  std::set<std::uint32_t> renamed_;
  std::set<std::uint32_t> identified_;  // as an element that was not known
  bool hasNamespaces_ = false;
};

}  // namespace orvane::nimbrel::check
