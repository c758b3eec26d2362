#pragma once

#include <string>

#include "util/Api.h"

namespace orvane::zel::util {

/// Turns a text into the name of a directory entry; `PortableFilenameMunger` is the library's own.
class NIMBREL_UTIL_API FilenameMunger {
 public:
  virtual ~FilenameMunger();

  /// Rewrites `name`, any bytes, in place. May throw; `name` then holds some text (basic
  /// guarantee). Callers let the exception through.
  virtual void munge(std::string& name) = 0;

 protected:
  FilenameMunger() = default;
  FilenameMunger(const FilenameMunger&) = default;
  FilenameMunger& operator=(const FilenameMunger&) = default;
};

}  // namespace orvane::zel::util
