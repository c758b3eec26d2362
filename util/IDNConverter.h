#pragma once

#include <string>

#include "util/Api.h"

namespace orvane::nimbrel::util {

/// Turns host names into their ASCII form; a host may substitute its own.
///
/// Stateless: const members may run on several threads at once.
class NIMBREL_UTIL_API IDNConverter {
 public:
  IDNConverter();
  virtual ~IDNConverter();

  /// Writes the ASCII form of a host, in lower case, to `out` and returns true; false, with `out`
  /// untouched, when there is none.
  ///
  /// `host` is UTF-8, as the host of an IRI is written. Percent escapes are decoded first. ASCII
  /// names of letters, digits, "-", "_" and "." pass; an IP literal in brackets passes unchanged;
  /// all else is converted by UTS #46, non-transitional. Rejected are null and empty hosts, any
  /// other ASCII character, an empty label (one final dot, the root, makes none), labels over 63
  /// and names over 253 bytes, and what UTS #46 rejects. `host` may point into `out`. ICU is
  /// started only for names that are not ASCII. Throws only `std::bad_alloc`, with `out` untouched
  /// (strong guarantee).
  virtual bool tryConvertToASCII(const char* host, std::string& out) const;
};

}  // namespace orvane::nimbrel::util
