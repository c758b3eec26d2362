#pragma once

#include <string_view>
#include <vector>

#include "config/Api.h"
#include "config/LegacyFinding.h"

namespace orvane::nimbrel::config {

/// What a finding code means, for those who explain it to authors.
struct FindingKind {
  LegacyCode code;  ///< whose kind this is
  /// Stable name in lower case with hyphens, such as "repeated-icon".
  std::string_view name;
  FindingLevel level;  ///< how bad it is
  /// What happens, in one sentence.
  std::string_view summary;
  /// A document that gives this finding to a user agent for English and German whose screen has 300
  /// dots per inch: the children of the root, or a whole document if it begins with "<widget".
  std::string_view bad;
  /// The same mended; empty where nothing is wrong with it.
  std::string_view mended;
};

/// The kind of a code. For any thread; never throws.
[[nodiscard]] NIMBREL_CONFIG_API const FindingKind& findingKind(LegacyCode code) noexcept;

/// All kinds, in the order of their codes. Throws only `std::bad_alloc`. For any thread.
[[nodiscard]] NIMBREL_CONFIG_API std::vector<FindingKind> findingKinds();

/// "error", "warning" or "note". For any thread; never throws.
[[nodiscard]] NIMBREL_CONFIG_API std::string_view findingLevelName(FindingLevel level) noexcept;

}  // namespace orvane::nimbrel::config
