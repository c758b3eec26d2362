#pragma once

#include <cstddef>
#include <string_view>

namespace orvane::nimbrel::tools {

/// Output is gathered until it has this many bytes, and then written.
inline constexpr std::size_t PIECE = 65536;

/// The control sequences of a terminal for bold text, for faint text, and for plain text again.
inline constexpr char BOLD[] = "\x1b[1m";
inline constexpr char FAINT[] = "\x1b[2m";
inline constexpr char PLAIN[] = "\x1b[0m";

/// Makes sure that no file opened later takes the number of a standard stream that the caller
/// closed: what is written there fails, and goes nowhere else. To be called first.
void secureStandardStreams() noexcept;

/// Writes all of it to standard output. Throws `Failure`; when the reader of a pipe is gone,
/// ends the process by SIGPIPE, without a word.
void writeOutput(std::string_view text);

/// Writes one line, ended by a line break, to standard error, as far as that works. What anybody
/// may have written has to be escaped in it already; the net below that keeps a terminal safe only.
void writeError(std::string_view line);

/// Ends the process with status 2 and a line on standard error that says that memory ran out. Needs
/// none itself.
[[noreturn]] void endWithoutMemory() noexcept;

/// Whether standard output goes to a terminal.
[[nodiscard]] bool isTerminal() noexcept;

/// The number of columns of the terminal that a descriptor stands for; 0 when it is not known.
[[nodiscard]] std::size_t terminalWidth(int descriptor) noexcept;

/// Whether standard output is coloured: "always", "never" or "auto". That is when the environment
/// says so (CLICOLOR_FORCE), or when a person sees it on a terminal that knows colours, but never
/// when the environment objects (NO_COLOR).
[[nodiscard]] bool isColourWanted(std::string_view when) noexcept;

}  // namespace orvane::nimbrel::tools
