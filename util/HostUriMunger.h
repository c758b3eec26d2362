#pragma once

#include <string>

#include "util/Api.h"
#include "util/UriMunger.h"

namespace orvane::zel::util {

/// Makes one name of the spellings of a host; different hosts never share a name.
///
///     "Example.ORG"        example.org             hosts compare without case
///     "bücher.example"     xn--bcher-kva.example   and by their ASCII form (UTS #46)
///     "example.org."       example.org%2E          the root dot makes another host, as it does
///                                                  for the origins of the web
///     "::1", "[0::1]"      %3A%3A1                 an IPv6 address, in its short form
///     "..", "a/b", "a%62"  %2E%2E, %61%2Fb, ...    no host: each byte sequence has its own name
///     300 times "a"        %61aa...aa~9835...      over 255 bytes: a prefix, "~", SHA-256
///
/// The argument is a decoded host, as libsoup hands it out: no percent escape is decoded here, so
/// that "a%62", which came from "a%2562", is no spelling of "ab". IPv6 addresses come with or
/// without brackets. IPv4 addresses are names like any other; only the dotted form is one.
///
/// The name is 1 to 255 bytes of ASCII letters, digits and "-._~%", and safe as a directory entry
/// as `PortableFilenameMunger` says, which leaves it alone. Only the empty host gives the empty
/// name.
///
/// Why it is injective: the text of a host name is its lower-case ASCII form, that of an IPv6
/// address its short form, and that of any other argument its bytes. The name is this text with
/// some bytes written as "%XX" in upper-case hex digits, among them each "%" and "~". Decoding the
/// escapes gives the text, so different texts have different names. An argument that is no host
/// name never shares the name of one: its first byte and its dots are escaped, while a host name
/// keeps its first byte and its inner dots. (A host name that begins with "-" has that escaped, but
/// its text is a host name itself, and so belongs to no other argument.) Only a long name has a
/// "~"; for those the guarantee is that of the digest of the text.
///
/// Stateless: any number of threads may share one.
class NIMBREL_UTIL_API HostUriMunger : public UriMunger {
 public:
  HostUriMunger();
  ~HostUriMunger() override;

  /// The name of `host`: NUL-terminated, any bytes, null counts as empty. Throws
  /// `std::bad_alloc`, and, for a name over 255 bytes, `std::runtime_error` when GLib cannot be
  /// loaded; changes nothing (strong guarantee).
  std::string munge(const char* host) override;
};

}  // namespace orvane::zel::util
