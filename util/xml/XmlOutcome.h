#pragma once

#include <exception>
#include <optional>

#include "util/ParseException.h"
#include "util/xml/LibXml.h"

namespace orvane::nimbrel::util::internal {

/// What went wrong in a parse, if anything; the first fault counts. Nothing may throw through
/// libxml2, so what its callbacks find is kept here until it is done.
class XmlOutcome {
 public:
  /// The document is rejected with this message, put on one line, at a place.
  void reject(const char* message, libxml::Position at) noexcept;
  /// Something else ends the parse, such as `std::bad_alloc`.
  void fail(std::exception_ptr failure) noexcept;
  /// There is no memory.
  void failForMemory() noexcept { isOutOfMemory_ = isDecided_ = true; }

  /// Once true, what follows in the document is of no interest.
  [[nodiscard]] bool isDecided() const noexcept { return isDecided_; }

  /// Throws what went wrong, if anything.
  void rethrow() const;

 private:
  std::optional<ParseException> rejection_;
  std::exception_ptr failure_;
  bool isOutOfMemory_ = false;
  bool isDecided_ = false;
};

}  // namespace orvane::nimbrel::util::internal
