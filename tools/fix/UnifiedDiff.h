#pragma once

#include <string>
#include <string_view>

namespace orvane::nimbrel::tools {

/// What was changed within the lines of a text, as `diff -u` prints it and `patch` reads it, with
/// three lines around each change; empty when nothing was. Both texts have as many lines. `name` is
/// that of either, escaped already. Throws only `std::bad_alloc`.
[[nodiscard]] std::string unifiedDiff(const std::string& name, std::string_view before,
                                      std::string_view after);

}  // namespace orvane::nimbrel::tools
