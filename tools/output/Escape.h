#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvane::nimbrel::tools {

/// How `appendEscaped` writes bytes that are no UTF-8.
enum class Encoding {
  TEXT,  ///< as "\xff"
  JSON   ///< as U+FFFD, since JSON knows no bytes
};

/// Whether a character beyond ASCII is invisible and acts on what stands around it: a control
/// character, a separator of lines, a mark of direction.
[[nodiscard]] bool isUnprintable(char32_t character) noexcept;

/// Appends a text that anybody may have written, made safe to print on a terminal: it can neither
/// move the cursor, nor reorder the line it stands in, nor imitate the end of its quotes.
///
/// Escaped as JSON does ("\n", "\u009b") are control characters (C0, DEL, C1), line and paragraph
/// separators, the characters that set, embed or override directions, quotes and backslashes; in
/// text also the characters that nothing shows (Unicode's Default_Ignorable_Code_Point), such as
/// the soft hyphen. All else, right-to-left letters included, stays. The text can be had back from
/// what is written.
void appendEscaped(std::string& out, std::string_view text, Encoding encoding);

/// The same as a string, for text.
[[nodiscard]] std::string escape(std::string_view text);

/// The same with quotes and backslashes as they are: the safety net of a line that is put together
/// of escaped parts. Changes nothing in one that is.
[[nodiscard]] std::string escapeUnprintable(std::string_view line);

/// The first `count` characters of a UTF-8 text; all of one that has not as many.
[[nodiscard]] std::string_view firstCharacters(std::string_view text, std::size_t count) noexcept;

/// The number of columns that a UTF-8 text takes on a terminal: two for a wide character (Unicode's
/// East Asian Width), none for one that combines with another.
[[nodiscard]] std::size_t width(std::string_view text) noexcept;

/// The longest beginning of a UTF-8 text that takes no more than `count` columns.
[[nodiscard]] std::string_view firstColumns(std::string_view text, std::size_t count) noexcept;

}  // namespace orvane::nimbrel::tools
