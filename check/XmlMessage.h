#pragma once

#include <cstdint>
#include <string_view>

#include "check/SourceText.h"
#include "check/XmlMistake.h"

namespace orvane::nimbrel::check {

/// Why the XML parser rejects a document with this message, in the words of an author, and where
/// the mistake begins; `line` and `column` are where it stopped, counted from 1, 0 when unknown.
/// Throws only `std::bad_alloc`. For any thread.
[[nodiscard]] XmlMistake explainXml(const SourceText& source, std::string_view message,
                                    std::uint32_t line, std::uint32_t column);

}  // namespace orvane::nimbrel::check
