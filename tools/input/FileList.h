#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvane::nimbrel::tools {

/// The files that a command was given: its operands, in each of which that is a directory, if
/// `recursive`, the documents and packages below it ("config.xml" and "*.wgt", each
/// directory in the order of names; symbolic links to directories are not followed), and those that
/// `filesFrom` lists, a file or "-" for standard input. A directory that cannot be read is one of
/// the files, as which it cannot be read either.
///
/// Names in a list end with a line break, or with NUL if it has one; empty ones do not count.
/// Throws `DocumentFailure` with `EXIT_UNUSABLE` when the list cannot be read.
[[nodiscard]] std::vector<std::string> listFiles(std::vector<std::string> operands, bool recursive,
                                                 const std::optional<std::string>& filesFrom);

}  // namespace orvane::nimbrel::tools
