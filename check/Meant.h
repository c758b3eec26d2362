#pragma once

#include <string>

#include "check/Diagnostic.h"

namespace orvane::nimbrel::check {

/// What the author meant where a name, a word or a namespace is wrong; empty when that is not
/// certain.
[[nodiscard]] std::string meantBy(const Diagnostic& finding);

}  // namespace orvane::nimbrel::check
