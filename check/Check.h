#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/Report.h"

namespace orvane::nimbrel::check {

/// Checks a document, whose bytes are taken over, for a user who prefers `locales`; without them
/// for every user.
///
/// The parser decides on each part by itself, whatever its language and what else is wrong; all
/// else is found in the tree. For every user, an element is not used only if nobody gets it. A
/// document that the parser rejects gives findings like any other. Throws only `std::bad_alloc`.
/// For any thread, but a document with the setting "debug" switches the process's debug lines on
/// for a moment.
[[nodiscard]] std::unique_ptr<const Report> checkDocument(
    std::string document, const std::optional<std::vector<std::string>>& locales);

}  // namespace orvane::nimbrel::check
