#pragma once

#include <string>
#include <string_view>

namespace orvane::nimbrel::tools {

/// A path as a URI (RFC 3986): of the scheme "file" when it is absolute, else a relative reference.
/// It is normalised: "." and empty segments are left out, ".." takes the one before with it.
[[nodiscard]] std::string artifactUri(std::string_view path);

/// Whether a path begins at the root of the file system.
[[nodiscard]] bool isAbsolute(std::string_view path) noexcept;

}  // namespace orvane::nimbrel::tools
