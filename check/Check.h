#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/Report.h"
#include "util/HostSymbols.h"

namespace orvane::nimbrel::check {

/// Checks a document, whose bytes are taken over, for a user who prefers `locales`; without them
/// for every user.
///
/// The parser decides on each part by itself, whatever its language and what else is wrong; all
/// else is found in the tree. For every user, an element is not used only if nobody gets it. A
/// document that the parser rejects gives findings like any other. Throws only `std::bad_alloc`.
///
/// `package` are the names of all entries of the package in which the document stands, which is
/// checked too; none for a document alone.
///
/// For any thread. A document with the setting "debug" switches the debug lines of the process on
/// until that setting has been read; then `logMask` is set again. Who checks on several threads at
/// once passes the mask that was in force before any of them began.
[[nodiscard]] std::unique_ptr<const Report> checkDocument(
    std::string document, const std::optional<std::vector<std::string>>& locales,
    std::uint32_t logMask = util::logMask(),
    const std::optional<std::vector<std::string>>& package = std::nullopt);

}  // namespace orvane::nimbrel::check
