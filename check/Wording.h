#pragma once

#include <string>
#include <string_view>

#include "check/Diagnostic.h"

namespace orvane::nimbrel::check {

/// What a finding says to an author. All text is UTF-8 and may quote the document.
struct Wording {
  std::string element;     ///< its name as findings spell it; empty for the whole document
  std::string attribute;   ///< likewise; empty for the element itself
  std::string_view value;  ///< null data when there is none; of a long namespace the beginning
  std::string sentence;    ///< what is wrong and what to write
  std::string suggestion;  ///< another name or value, where that is certain; else empty
};

/// Puts a finding into words. Throws only `std::bad_alloc`. For any thread.
[[nodiscard]] Wording wordingOf(const Diagnostic& finding);

}  // namespace orvane::nimbrel::check
