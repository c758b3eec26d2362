#include "util/IDNConverter.h"

#include <unicode/uidna.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

#include "util/Ascii.h"
#include "util/IRICharacters.h"
#include "util/IpAddress.h"
#include "util/PercentEscape.h"

namespace orvane::nimbrel::util {
namespace {

constexpr std::size_t MAX_LABEL = 63;
constexpr std::size_t MAX_NAME = 253;  // without the dot of the root

// More bytes than a name needs that fits MAX_NAME, unless it is stuffed with marks or characters
// that vanish. ICU takes quadratic time to sort marks: longer names are not shown to it.
constexpr std::size_t MAX_UNICODE_NAME = 2048;

struct IdnaCloser {
  void operator()(UIDNA* idna) const noexcept { uidna_close(idna); }
};

/// Replaces percent escapes by their bytes. A "%" that begins none stays, for others to reject.
std::string decodePercentEscapes(std::string_view host) {
  std::size_t at = std::min(host.find('%'), host.size());
  std::string decoded(host, 0, at);
  decoded.reserve(host.size());
  for (; at < host.size(); ++at) {
    const int byte = internal::escapedByte(host, at);
    decoded.push_back(byte < 0 ? host[at] : static_cast<char>(byte));
    at += byte < 0 ? 0 : 2;
  }
  return decoded;
}

bool isAscii(std::string_view text) noexcept {
  for (const char byte : text) {
    if (static_cast<unsigned char>(byte) >= 0x80) {
      return false;
    }
  }
  return true;
}

/// Checks an ASCII name and makes it lower case. False, with the name in any state, when it has a
/// character, a label or a length that no name may have.
bool finishAscii(std::string& name) noexcept {
  std::size_t label = 0;
  for (char& character : name) {
    if (character == '.') {
      if (label == 0) {
        return false;
      }
      label = 0;
      continue;
    }
    character = ascii::lowerCase(character);
    const bool allowed =
        internal::isIRICharacter(character, internal::IRI_ALPHA | internal::IRI_DIGIT) ||
        character == '-' || character == '_';
    if (!allowed || ++label > MAX_LABEL) {
      return false;
    }
  }
  const std::size_t root = label == 0 ? 1 : 0;
  return !name.empty() && name.size() <= MAX_NAME + root;
}

/// The ASCII form of a name in Unicode by UTS #46, or an empty text when there is none.
std::string convertUnicode(std::string_view name) {
  if (name.size() > MAX_UNICODE_NAME) {
    return {};
  }
  // Not restricted to the letters and digits of STD 3, because "_" is a part of names in use; other
  // ASCII characters are rejected afterwards.
  constexpr std::uint32_t OPTIONS =
      UIDNA_NONTRANSITIONAL_TO_ASCII | UIDNA_CHECK_BIDI | UIDNA_CHECK_CONTEXTJ;
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<UIDNA, IdnaCloser> idna(uidna_openUTS46(OPTIONS, &status));
  char ascii[MAX_NAME + 2];  // a longer form does not fit and is an error
  UIDNAInfo info = UIDNA_INFO_INITIALIZER;
  // ICU puts U+FFFD for bytes that are no UTF-8, and then rejects it.
  const std::int32_t length =
      uidna_nameToASCII_UTF8(idna.get(), name.data(), static_cast<std::int32_t>(name.size()), ascii,
                             static_cast<std::int32_t>(sizeof(ascii)), &info, &status);
  if (status == U_MEMORY_ALLOCATION_ERROR) {
    throw std::bad_alloc();
  }
  if (U_FAILURE(status) || info.errors != 0) {
    return {};
  }
  return {ascii, static_cast<std::size_t>(length)};
}

}  // namespace

IDNConverter::IDNConverter() = default;
IDNConverter::~IDNConverter() = default;

bool IDNConverter::tryConvertToASCII(const char* host, std::string& out) const {
  if (host == nullptr) {
    return false;
  }
  if (internal::isIpLiteral(host)) {
    out = std::string(host);
    return true;
  }
  std::string name = decodePercentEscapes(host);
  if (!isAscii(name)) {
    name = convertUnicode(name);
  }
  if (!finishAscii(name)) {
    return false;
  }
  out = std::move(name);
  return true;
}

}  // namespace orvane::nimbrel::util
