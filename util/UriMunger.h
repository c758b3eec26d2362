#pragma once

#include <string>

#include "util/Api.h"

namespace orvane::zel::util {

/// Turns the host of a URI into the form used for directory names; `HostUriMunger` is the library's
/// own.
class NIMBREL_UTIL_API UriMunger {
 public:
  virtual ~UriMunger();

  /// The rewritten host. `host` is NUL-terminated, any bytes. May throw; the munger can then be
  /// used as before (basic guarantee). Callers let the exception through.
  virtual std::string munge(const char* host) = 0;

 protected:
  UriMunger() = default;
  UriMunger(const UriMunger&) = default;
  UriMunger& operator=(const UriMunger&) = default;
};

}  // namespace orvane::zel::util
