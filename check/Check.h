#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/PackageFiles.h"
#include "check/Report.h"
#include "util/HostSymbols.h"

namespace orvane::nimbrel::check {

/// For whom a document is checked, and in what.
struct CheckSettings {
  /// What the user prefers, best first; without them the document is checked for every user.
  std::optional<std::vector<std::string>> locales = std::nullopt;
  /// Set again when a setting of the document has changed the log mask of the process. Who checks
  /// on several threads at once passes the mask that was in force before any of them began.
  std::uint32_t logMask = util::logMask();
  /// What is in the package in which the document stands, which is checked too; none for a document
  /// alone.
  std::optional<PackageContents> package = std::nullopt;
};

/// Checks a document, whose bytes are taken over.
///
/// The parser decides on each part by itself, whatever its language and what else is wrong; all
/// else is found in the tree. For every user, an element is not used only if nobody gets it. A
/// document that the parser rejects gives findings like any other. Throws only `std::bad_alloc`.
///
/// For any thread. A document with the setting "debug" switches the debug lines of the process on
/// until that setting has been read.
[[nodiscard]] std::unique_ptr<const Report> checkDocument(std::string document,
                                                          const CheckSettings& settings = {});

}  // namespace orvane::nimbrel::check
