#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "check/Suggestions.h"
#include "config/ElementDescription.h"

// What can be said of a value by its kind alone.
namespace orvane::nimbrel::check {

/// What is wrong, and what was meant.
struct Advice {
  std::string sentence;  ///< of an origin without its end
  Suggestion meant = {};
  bool isUseless = false;  ///< whether the value as it is serves nobody
};

/// What is wrong with an origin that the parser ignores.
[[nodiscard]] Advice adviceOnOrigin(const std::string& origin);

/// What is odd about a value that the parser does not judge, in a whole sentence; nothing when it
/// looks right.
[[nodiscard]] std::optional<Advice> adviceOnValue(config::ValueKind kind, const std::string& value);

/// Whether a text looks like a language tag (BCP 47): a language of two or three letters, or "i" or
/// "x", and further parts.
[[nodiscard]] bool isLanguageTag(const std::string& text);

/// Whether a kind of value is a number.
[[nodiscard]] bool isNumeric(config::ValueKind kind) noexcept;

/// Whether a text without white space at its ends is a number of this kind and nothing else.
[[nodiscard]] bool isWholeNumber(config::ValueKind kind, std::string_view text);

/// The number that the parser reads at the beginning of a text which it accepts.
[[nodiscard]] std::string usedNumber(config::ValueKind kind, const std::string& text);

/// The number that was meant by "480px", as sizes are in pixels, or by one in typographic quotes.
[[nodiscard]] Suggestion suggestedNumber(config::ValueKind kind, std::string_view text);

}  // namespace orvane::nimbrel::check
