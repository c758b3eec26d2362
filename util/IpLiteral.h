#pragma once

#include <string_view>

namespace orvane::nimbrel::util::internal {

/// Whether a host is an IP literal of RFC 3986, brackets included: "[::1]", "[v1.x]".
[[nodiscard]] bool isIpLiteral(std::string_view host) noexcept;

}  // namespace orvane::nimbrel::util::internal
