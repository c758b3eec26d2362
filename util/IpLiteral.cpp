#include "util/IpLiteral.h"

#include <cstddef>

#include "util/IRICharacters.h"

namespace orvane::nimbrel::util::internal {
namespace {

/// The length of the characters in front that belong to the classes.
std::size_t spanOf(std::string_view text, IRICharacters classes) noexcept {
  std::size_t length = 0;
  while (length < text.size() && isIRICharacter(text[length], classes)) {
    ++length;
  }
  return length;
}

/// `IPvFuture`, such as "v1.x:y".
bool isFutureAddress(std::string_view text) noexcept {
  if (text.empty() || (text[0] != 'v' && text[0] != 'V')) {
    return false;
  }
  text.remove_prefix(1);
  const std::size_t version = spanOf(text, IRI_HEX_DIGIT);
  if (version == 0 || version == text.size() || text[version] != '.') {
    return false;
  }
  text.remove_prefix(version + 1);
  return !text.empty() && spanOf(text, IRI_UNRESERVED | IRI_SUB_DELIMS | IRI_COLON) == text.size();
}

/// `dec-octet`: 0 to 255 without leading zeros.
bool isDecimalOctet(std::string_view digits) noexcept {
  if (digits.empty() || digits.size() > 3 || (digits[0] == '0' && digits.size() > 1)) {
    return false;
  }
  int value = 0;
  for (const char digit : digits) {
    value = value * 10 + (digit - '0');
  }
  return value <= 255;
}

/// `IPv4address`.
bool isIPv4Address(std::string_view text) noexcept {
  for (int dots = 0;; ++dots) {
    const std::size_t length = spanOf(text, IRI_DIGIT);
    if (!isDecimalOctet(text.substr(0, length))) {
      return false;
    }
    text.remove_prefix(length);
    if (text.empty() || dots == 3) {
      return text.empty() && dots == 3;
    }
    if (text[0] != '.') {
      return false;
    }
    text.remove_prefix(1);
  }
}

/// `IPv6address`: eight groups of hexadecimal digits, of which "::" stands for one or more and an
/// IPv4 address at the end for two.
bool isIPv6Address(std::string_view text) noexcept {
  constexpr int GROUPS = 8;
  int groups = 0;
  bool elided = false;
  bool needsGroup = true;  // a single ":" came before
  if (text.substr(0, 2) == "::") {
    elided = true;
    needsGroup = false;
    text.remove_prefix(2);
  }
  while (!text.empty()) {
    const std::size_t digits = spanOf(text, IRI_HEX_DIGIT);
    if (digits < text.size() && text[digits] == '.') {
      groups += 2;
      return isIPv4Address(text) && (elided ? groups < GROUPS : groups == GROUPS);
    }
    if (digits == 0 || digits > 4 || ++groups > GROUPS) {
      return false;
    }
    text.remove_prefix(digits);
    needsGroup = false;
    if (text.empty()) {
      break;
    }
    if (text.substr(0, 2) == "::") {
      if (elided) {
        return false;
      }
      elided = true;
      text.remove_prefix(2);
    } else if (text[0] == ':') {
      needsGroup = true;
      text.remove_prefix(1);
    } else {
      return false;
    }
  }
  return !needsGroup && (elided ? groups < GROUPS : groups == GROUPS);
}

}  // namespace

bool isIpLiteral(std::string_view host) noexcept {
  if (host.size() < 2 || host.front() != '[' || host.back() != ']') {
    return false;
  }
  const std::string_view address = host.substr(1, host.size() - 2);
  return isIPv6Address(address) || isFutureAddress(address);
}

}  // namespace orvane::nimbrel::util::internal
