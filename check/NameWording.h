#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "check/Diagnostic.h"
#include "config/ElementDescription.h"

// Sentences on names that are not known or stand in the wrong place: what is allowed there.
namespace orvane::nimbrel::check {

/// "a", "a or b", "a, b or c".
[[nodiscard]] std::string listOf(const std::vector<std::string>& items,
                                 std::string_view conjunction = " or ");

/// The beginning of a text, at the end of a character.
[[nodiscard]] std::string_view beginningOf(std::string_view text, std::size_t size) noexcept;

/// A text of a document in quotes: its beginning, with the number of each character that nobody
/// sees ("<U+200B>").
[[nodiscard]] std::string quoted(std::string_view text);

/// Names the first character of a text that nobody sees, "the invisible character U+200B (zero
/// width space)"; empty when there is none.
[[nodiscard]] std::string invisibleIn(std::string_view text);

/// "<name>".
[[nodiscard]] std::string tagOf(const std::string& name);
/// @overload
[[nodiscard]] std::string tagOf(const config::ElementDescription& element);

/// @name One for each code
/// @{
[[nodiscard]] std::string rootSentence(const Diagnostic& finding);
[[nodiscard]] std::string unknownAttributeSentence(const Diagnostic& finding);
[[nodiscard]] std::string unknownElementSentence(const Diagnostic& finding);
[[nodiscard]] std::string unexpectedSentence(const util::XmlNode& element);
[[nodiscard]] std::string misplacedSentence(const Diagnostic& finding);
[[nodiscard]] std::string unknownKeySentence(const Diagnostic& finding);
/// @}

}  // namespace orvane::nimbrel::check
