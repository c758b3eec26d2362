#pragma once

#include "util/Api.h"
#include "util/IRI.h"
#include "util/Option.h"

namespace orvane::nimbrel::util {

/// Takes IRIs apart by the `IRI` production of RFC 3987; a host may substitute its own.
///
/// Stateless: const members may run on several threads at once.
class NIMBREL_UTIL_API IRIParser {
 public:
  IRIParser();
  virtual ~IRIParser();

  /// False, with `out` untouched, when `text` is null or no IRI: a scheme is needed, and the bytes
  /// must be UTF-8 whose characters the production allows at their place. Ports are decimal, from 0
  /// to 65535. True, with the components in `out`, otherwise. `out` may hold the very text that is
  /// read. Throws only `std::bad_alloc`, with `out` untouched (strong guarantee).
  virtual bool tryParse(const char* text, Option<IRI>& out) const;
};

}  // namespace orvane::nimbrel::util
