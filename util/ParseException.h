#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "util/Api.h"

namespace orvane::nimbrel {

/// Says why and where an XML document was rejected.
///
/// `what()` is one line in English without a trailing line break; it may quote bytes of the
/// document.
class NIMBREL_UTIL_API ParseException : public std::runtime_error {
 public:
  /// `line` and `column` count from 1; 0 means unknown.
  ParseException(const std::string& message, std::uint32_t line, std::uint32_t column);
  ParseException(const ParseException&) = default;
  ParseException& operator=(const ParseException&) = default;
  ~ParseException() override;

  std::uint32_t line;    ///< Line of the document, counted from 1; 0 when unknown.
  std::uint32_t column;  ///< Column in that line, counted from 1; 0 when unknown.
};

}  // namespace orvane::nimbrel
