#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvane::nimbrel::tools {

/// The files that a command was given: its operands, then those that `filesFrom` lists, a file or
/// "-" for standard input. Names in a list end with a line break, or with NUL if the list has one;
/// empty names do not count.
///
/// If `recursive`, a directory stands for the documents and packages below it ("config.xml" and
/// "*.wgt"), in the order of names; symbolic links to directories are not followed. A directory
/// that cannot be listed stays in place of its files: who reads it as a file learns why.
///
/// Throws `DocumentFailure` with `EXIT_UNUSABLE` when the list cannot be read.
[[nodiscard]] std::vector<std::string> listFiles(std::vector<std::string> operands, bool recursive,
                                                 const std::optional<std::string>& filesFrom);

}  // namespace orvane::nimbrel::tools
