#pragma once

#include <stdexcept>
#include <string>

#include "util/FilenameMunger.h"
#include "util/UriMunger.h"

namespace orvane::zel::config {

/// Shows that, and where, it was at work.
class MarkingFilenameMunger : public util::FilenameMunger {
 public:
  void munge(std::string& name) override { name = "{" + name + "}"; }
};

/// Shows that, and where, it was at work.
class MarkingUriMunger : public util::UriMunger {
 public:
  std::string munge(const char* host) override { return "<" + std::string(host) + ">"; }
};

class ThrowingFilenameMunger : public util::FilenameMunger {
 public:
  void munge(std::string& /*name*/) override { throw std::length_error("filename munger"); }
};

class ThrowingUriMunger : public util::UriMunger {
 public:
  std::string munge(const char* /*host*/) override { throw std::length_error("URI munger"); }
};

}  // namespace orvane::zel::config
