#pragma once

#include <cstddef>
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

/// Whether a character may stand in a document.
[[nodiscard]] bool isXmlCharacter(char32_t c) noexcept;

}  // namespace orvane::nimbrel::check
