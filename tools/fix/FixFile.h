#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "check/FixDocument.h"
#include "tools/input/Input.h"

namespace orvane::nimbrel::tools {

/// Fixes what is certain in the document in a file, which is replaced if anything is; see
/// `replaceFile`. One that somebody else changes meanwhile is read and fixed again. Throws
/// `DocumentFailure`, with `EXIT_UNUSABLE` for a packaged document and standard input too.
[[nodiscard]] check::FixedDocument fixFile(const std::string& path,
                                           const std::optional<std::vector<std::string>>& locales,
                                           std::uint32_t logMask);

/// A document with what is certain in it fixed, and what would be changed.
struct FixedWithDiff {
  check::FixedDocument fixed;
  /// As `unifiedDiff` has it: with the bytes of a UTF-8 document, in UTF-8 of another one. For a
  /// terminal it is escaped.
  std::string diff;
};
[[nodiscard]] FixedWithDiff fixWithDiff(const Document& document,
                                        const std::optional<std::vector<std::string>>& locales,
                                        std::uint32_t logMask, bool isForTerminal);

}  // namespace orvane::nimbrel::tools
