#pragma once

#include <string_view>

namespace orvane::nimbrel::tools {

/// Makes sure that no file opened later takes the number of a standard stream that the caller
/// closed: what is written there fails, and goes nowhere else. A closed pipe becomes a failing
/// write. To be called first.
void secureStandardStreams() noexcept;

/// Writes all of it to standard output. Throws `OutputFailure`.
void writeOutput(std::string_view text);

/// Writes one line, ended by a line break, to standard error, as far as that works. What anybody
/// may have written has to be escaped in it already; the net below that keeps a terminal safe only.
void writeError(std::string_view line);

/// Whether standard output goes to a terminal.
[[nodiscard]] bool isTerminal() noexcept;

/// Whether a person sees standard output on a terminal that knows colours and does not object to
/// them (environment variable NO_COLOR).
[[nodiscard]] bool isColourWanted() noexcept;

}  // namespace orvane::nimbrel::tools
