#pragma once

#include <string>
#include <string_view>

#include "check/Diagnostic.h"

// Sentences on values that are words, IRIs or numbers.
namespace orvane::nimbrel::check {

/// The words that are allowed, and what becomes of another one.
[[nodiscard]] std::string wordSentence(const Diagnostic& finding);

/// Why a value is no IRI, and what becomes of it.
[[nodiscard]] std::string iriSentence(const Diagnostic& finding, std::string_view consequence);

/// Why the parser takes no number, and what becomes of the value.
[[nodiscard]] std::string numberSentence(const Diagnostic& finding, std::string_view consequence);

/// Which number the parser takes.
[[nodiscard]] std::string partialSentence(const Diagnostic& finding);

/// What is odd about a value that is kept.
[[nodiscard]] std::string suspiciousSentence(const Diagnostic& finding);

}  // namespace orvane::nimbrel::check
