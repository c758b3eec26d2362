#pragma once

#include <string>

#include "util/Api.h"

namespace orvane::zel::util {

/// Turns the host of a URI into the form used for directory names; see `HostUriMunger` for ours.
class NIMBREL_UTIL_API UriMunger {
 public:
  virtual ~UriMunger();

  /// The rewritten host. `host` is NUL-terminated, any bytes. May throw, with the munger as usable
  /// as before (basic guarantee); callers pass that on.
  virtual std::string munge(const char* host) = 0;

 protected:
  UriMunger() = default;
  UriMunger(const UriMunger&) = default;
  UriMunger& operator=(const UriMunger&) = default;
};

}  // namespace orvane::zel::util
