#include "util/HostUriMunger.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "util/Ascii.h"
#include "util/IDNConverter.h"
#include "util/IpAddress.h"
#include "util/NameEscape.h"

namespace orvane::zel::util {
namespace {

constexpr bool isHostByte(char byte) noexcept {
  return nimbrel::util::ascii::isLetterOrDigit(byte) || byte == '-' || byte == '_' || byte == '.';
}

// The short form of an IPv6 address with or without brackets; false for all else.
bool tryShortenAddress(std::string_view host, std::string& out) {
  if (host.size() > 2 && host.front() == '[' && host.back() == ']') {
    host = host.substr(1, host.size() - 2);
  }
  in6_addr address{};
  char text[INET6_ADDRSTRLEN];
  if (!nimbrel::util::internal::tryReadIPv6(host, address) ||
      inet_ntop(AF_INET6, &address, text, sizeof text) == nullptr) {
    return false;
  }
  out = text;
  return true;
}

// The lower-case ASCII form of a host name. The converter decodes percent escapes, which are none
// in a host that was decoded already, and passes literals in brackets, which are no names.
bool tryConvertName(const char* host, std::string& out) {
  return std::strpbrk(host, "%[") == nullptr &&
         nimbrel::util::IDNConverter().tryConvertToASCII(host, out) &&
         std::all_of(out.begin(), out.end(), isHostByte);
}

std::string escapeHost(std::string_view text) {
  std::string name;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool leadingDash = text[i] == '-' && i == 0;
    const bool rootDot = text[i] == '.' && i == text.size() - 1;
    if (leadingDash || rootDot) {
      internal::appendEscape(name, '%', text[i]);
    } else {
      name += text[i];
    }
  }
  return name;
}

// The first byte tells the name of what is no host from the names of hosts.
std::string escapeOther(std::string_view text) {
  std::string name;
  for (std::size_t i = 0; i < text.size() && name.size() <= internal::MAX_NAME_BYTES; ++i) {
    if (i != 0 && text[i] != '.' && isHostByte(text[i])) {
      name += text[i];
    } else {
      internal::appendEscape(name, '%', text[i]);
    }
  }
  return name;
}

}  // namespace

HostUriMunger::HostUriMunger() = default;
HostUriMunger::~HostUriMunger() = default;

std::string HostUriMunger::munge(const char* host) {
  if (host == nullptr) {
    return {};
  }
  std::string text;
  std::string name;
  if (tryConvertName(host, text)) {
    name = escapeHost(text);
  } else {
    if (!tryShortenAddress(host, text)) {
      text = host;
    }
    name = escapeOther(text);
  }
  if (name.size() > internal::MAX_NAME_BYTES) {
    name = internal::longName(name, "%", "~", text);
  }
  return name;
}

}  // namespace orvane::zel::util
