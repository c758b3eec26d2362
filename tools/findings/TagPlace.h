#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "tools/findings/Check.h"

namespace orvane::nimbrel::tools {

/// Bytes of a line.
struct Place {
  std::size_t begin;
  std::size_t end;
};

/// Where a line of a document has what a finding is about: the column, if it is known; else the
/// attribute with its value, if the line has it; else the "<" and the name of the element.
///
/// The line is not parsed in its context: what only looks like a tag counts as one. Nothing unless
/// one place alone can be meant.
[[nodiscard]] std::optional<Place> placeIn(std::string_view line, const CheckedFinding& finding);

}  // namespace orvane::nimbrel::tools
