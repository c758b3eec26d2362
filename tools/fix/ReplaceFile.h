#pragma once

#include <string>
#include <string_view>

namespace orvane::nimbrel::tools {

/// Writes a new file with these bytes and gives it the name, group, mode and extended attributes of
/// an old one, and its owner if that is allowed: who reads the file sees all of one or all of the
/// other. A symbolic link stays and what it points to is replaced; other hard links keep the old
/// bytes.
///
/// False, with nothing changed, when the file does not hold the bytes `before` any more. Throws
/// `DocumentFailure` with `EXIT_UNUSABLE` when a file may not or cannot be written, or cannot keep
/// what it has; then the old one is as it was. No other file is left behind, as signals wait until
/// all is done, but for SIGKILL and a machine that stops.
[[nodiscard]] bool replaceFile(const std::string& path, std::string_view before,
                               std::string_view after);

}  // namespace orvane::nimbrel::tools
