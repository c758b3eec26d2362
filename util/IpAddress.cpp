#include "util/IpAddress.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstddef>

#include "util/Ascii.h"
#include "util/IRICharacters.h"

namespace orvane::nimbrel::util::internal {
namespace {

/// `IPvFuture`, such as "v1.x:y".
bool isFutureAddress(std::string_view text) noexcept {
  const std::size_t dot = text.find('.');
  if (dot == std::string_view::npos || dot < 2 || ascii::lowerCase(text[0]) != 'v') {
    return false;
  }
  const std::string_view version = text.substr(1, dot - 1);
  const std::string_view address = text.substr(dot + 1);
  return !address.empty() && std::all_of(version.begin(), version.end(), ascii::isHexDigit) &&
         std::all_of(address.begin(), address.end(), [](char c) {
           return isIRICharacter(c, IRI_UNRESERVED | IRI_SUB_DELIMS | IRI_COLON);
         });
}

}  // namespace

bool tryReadIPv6(std::string_view text, in6_addr& address) noexcept {
  char terminated[INET6_ADDRSTRLEN] = {};
  if (text.size() >= sizeof terminated) {
    return false;
  }
  text.copy(terminated, text.size());
  return ::inet_pton(AF_INET6, terminated, &address) == 1;
}

bool isIpLiteral(std::string_view host) noexcept {
  if (host.size() < 2 || host.front() != '[' || host.back() != ']') {
    return false;
  }
  in6_addr address;
  host = host.substr(1, host.size() - 2);
  return tryReadIPv6(host, address) || isFutureAddress(host);
}

}  // namespace orvane::nimbrel::util::internal
