#pragma once

#include <string>
#include <string_view>

#include "util/Api.h"

namespace orvane::zel::util::internal {

/// The functions that the libraries use of GLib. They stand in a table so that GLib is loaded with
/// the first name that needs it: reading a document does not.
struct GlibFunctions {
  /// The SHA-256 digest of some bytes, in 64 lower-case hex digits.
  std::string (*sha256Hex)(std::string_view bytes);

  /// Percent-escapes every byte but unreserved characters, valid UTF-8 and what stands in `keep`,
  /// which may be null. False, with `out` untouched, when GLib gives nothing.
  bool (*tryEscapeUri)(const char* text, const char* keep, std::string& out);
};

/// Loads GLib with the first call. Throws `std::runtime_error` that says why when it cannot be
/// loaded; the next call tries again. For any thread.
NIMBREL_UTIL_API const GlibFunctions& glibFunctions();

}  // namespace orvane::zel::util::internal
