#pragma once

#include <string>

namespace orvane::nimbrel::tools {

/// The name that stands for standard input.
inline constexpr char STANDARD_INPUT[] = "-";

/// Throws `Failure` with `EXIT_UNUSABLE` unless `path` is a regular file that can be read.
void requireReadable(const std::string& path);

/// All bytes of a regular file, or of standard input for "-". Throws `Failure` with `EXIT_UNUSABLE`
/// when they cannot be read, with `EXIT_REJECTED` when there are 4 GiB or more.
std::string readAll(const std::string& path);

}  // namespace orvane::nimbrel::tools
