#pragma once

#include <string>

#include "check/Fix.h"
#include "tools/input/Input.h"

namespace orvane::nimbrel::tools {

/// Fixes what is certain in the document in a file, which is replaced if anything is; see
/// `replaceFile`. One that somebody else changes meanwhile is read and fixed again. Throws
/// `DocumentFailure`, with `EXIT_UNUSABLE` for a packaged document and standard input too.
/// `isUnpacked` as for `readDocument`.
[[nodiscard]] check::FixedDocument fixFile(const std::string& path, check::CheckSettings settings,
                                           bool isUnpacked);

/// A document with what is certain in it fixed, and what would be changed.
struct FixedWithDiff {
  check::FixedDocument fixed;
  /// As `diff -u` prints it: with the bytes of a UTF-8 document, in UTF-8 of another one. For a
  /// terminal it is escaped.
  std::string diff;
};
[[nodiscard]] FixedWithDiff fixWithDiff(const Document& document,
                                        const check::CheckSettings& settings, bool isForTerminal);

}  // namespace orvane::nimbrel::tools
