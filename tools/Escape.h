#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvane::nimbrel::tools {

/// A text made safe to print on a terminal: one that a stranger wrote can neither move the cursor
/// nor reorder the line it stands in.
///
/// Control characters (C0, DEL, C1), line and paragraph separators and the characters that override
/// or embed directions become "\n", "\t", "\u009b" and the like; bytes that are no UTF-8 become
/// "\xff". All else, right-to-left letters included, stays. The escapes but the last one are
/// JSON's.
[[nodiscard]] std::string escape(std::string_view text);

/// The same for JSON text laid out over several lines, whose line breaks stay.
[[nodiscard]] std::string escapeJson(std::string_view json);

/// The first `count` characters of a UTF-8 text; all of one that has not as many.
[[nodiscard]] std::string_view firstCharacters(std::string_view text, std::size_t count) noexcept;

/// The number of characters in a UTF-8 text, which is its width on a terminal in most scripts.
[[nodiscard]] std::size_t width(std::string_view text) noexcept;

}  // namespace orvane::nimbrel::tools
