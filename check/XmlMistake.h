#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "check/SourceText.h"

namespace orvane::nimbrel::check {

/// Why a text is no well-formed document.
struct XmlMistake {
  Span span;             ///< the token with which the mistake begins
  std::string sentence;  ///< what is wrong, or what to write
};

/// Finds the first mistake in the markup of a text that the XML parser rejects at `stopped`;
/// nothing for one that only the parser knows. Takes time in proportion to the text. Throws only
/// `std::bad_alloc`. For any thread.
[[nodiscard]] std::optional<XmlMistake> mistakeIn(std::string_view text, std::size_t stopped);

/// Why the XML parser rejects a document with this message, in the words of an author; `line` and
/// `column` are where it stopped, counted from 1, 0 when unknown. Throws and may be called as
/// above.
[[nodiscard]] XmlMistake explainXml(const SourceText& source, std::string_view message,
                                    std::uint32_t line, std::uint32_t column);

}  // namespace orvane::nimbrel::check
