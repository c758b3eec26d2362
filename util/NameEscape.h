#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "util/PercentEscape.h"
#include "util/glib/GlibFunctions.h"

// What the two mungers share; not part of the interface.
namespace orvane::zel::util::internal {

/// The longest name of a directory entry, in bytes, on the usual file systems.
constexpr std::size_t MAX_NAME_BYTES = 255;

using nimbrel::util::internal::appendEscape;
using nimbrel::util::internal::escapedByte;

/// The name of a text whose escaped form is too long: as much of that form as fits without cutting
/// an escape begun by one of `introducers`, `marker`, and the digest of the text.
inline std::string longName(std::string_view escaped, std::string_view introducers,
                            std::string_view marker, std::string_view text) {
  constexpr std::size_t DIGEST_BYTES = 64;
  std::size_t size = MAX_NAME_BYTES - DIGEST_BYTES - marker.size();
  const std::size_t introducer = escaped.find_first_of(introducers, size - 2);
  if (introducer < size) {
    size = introducer;
  }
  std::string name(escaped.substr(0, size));
  name += marker;
  name += glibFunctions().sha256Hex(text);
  return name;
}

}  // namespace orvane::zel::util::internal
