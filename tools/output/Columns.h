#pragma once

#include <cstddef>
#include <string_view>

namespace orvane::nimbrel::tools {

/// The number of columns that a UTF-8 text takes on a terminal: two for a wide character (Unicode's
/// East Asian Width), none for one that combines with another.
[[nodiscard]] std::size_t width(std::string_view text) noexcept;

/// The longest beginning of a UTF-8 text that takes no more than `count` columns.
[[nodiscard]] std::string_view firstColumns(std::string_view text, std::size_t count) noexcept;

}  // namespace orvane::nimbrel::tools
