#pragma once

#include <string>
#include <string_view>

namespace orvane::nimbrel::check {

/// What the XML parser says of a document that it rejects, in the words of an author: what is wrong
/// and what to write. A message that is not known stays as it is.
[[nodiscard]] std::string explainXml(std::string_view message);

}  // namespace orvane::nimbrel::check
