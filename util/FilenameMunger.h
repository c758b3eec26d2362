#pragma once

#include <string>

#include "util/Api.h"

namespace orvane::zel::util {

/// Turns a text into the name of a directory entry; see `PortableFilenameMunger` for our own.
class NIMBREL_UTIL_API FilenameMunger {
 public:
  virtual ~FilenameMunger();

  /// Rewrites `name`, any bytes, in place. May throw, with `name` usable whatever it holds then
  /// (basic guarantee); callers pass on what it throws.
  virtual void munge(std::string& name) = 0;

 protected:
  FilenameMunger() = default;
  FilenameMunger(const FilenameMunger&) = default;
  FilenameMunger& operator=(const FilenameMunger&) = default;
};

}  // namespace orvane::zel::util
