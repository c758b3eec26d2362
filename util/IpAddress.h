#pragma once

#include <netinet/in.h>

#include <string_view>

namespace orvane::nimbrel::util::internal {

/// Reads an IPv6 address without brackets, such as "::1", that has no NUL in it. False for anything
/// else.
[[nodiscard]] bool tryReadIPv6(std::string_view text, in6_addr& address) noexcept;

/// Whether a host is an IP literal of RFC 3986, brackets included: "[::1]", "[v1.x]".
[[nodiscard]] bool isIpLiteral(std::string_view host) noexcept;

}  // namespace orvane::nimbrel::util::internal
