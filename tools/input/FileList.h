#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvane::nimbrel::tools {

/// Which files below a directory count.
struct DirectoryRules {
  std::vector<std::string> excluded;  ///< names of files and directories, as patterns of a shell
  bool followsLinksOut = true;        ///< symbolic links to files that are not below it
};

/// The files that a command was given: its operands, then those that `filesFrom` lists, a file or
/// "-" for standard input. Names in a list end with a line break, or with NUL if the list has one;
/// empty names do not count.
///
/// With `rules`, a directory stands for the documents and packages below it ("config.xml" and
/// "*.wgt", in any case), in the order of names; symbolic links to directories are not followed. A
/// directory that cannot be listed stays in place of its files: who reads it as a file learns why.
///
/// Throws `Failure` with `EXIT_UNUSABLE` when the list cannot be read, and for directories in which
/// there is no file.
[[nodiscard]] std::vector<std::string> listFiles(std::vector<std::string> operands,
                                                 const DirectoryRules* rules,
                                                 const std::optional<std::string>& filesFrom);

/// The names of all files and folders below a folder, relative to it and with "/" at the end of a
/// folder's, in no order; but what version control and package managers keep (".git",
/// "node_modules"). Symbolic links are followed. Throws `DocumentFailure` with `EXIT_UNUSABLE` when
/// there are more than 100,000.
[[nodiscard]] std::vector<std::string> namesBelow(const std::string& folder);

}  // namespace orvane::nimbrel::tools
