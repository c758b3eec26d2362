#pragma once

#include "config/Finding.h"

namespace orvane::nimbrel::check {

/// What is wrong, or may not be what was meant. The first codes are those that the parser reports,
/// the others are found in the tree or the package.
enum class FindingCode {
  DOCUMENT_REJECTED,
  WRONG_ROOT,
  REQUIRED_FEATURE_NAME,
  NUMBER_REJECTED,
  MISSING_ATTRIBUTE,
  EMPTY_VALUE,
  NOT_AN_IRI,
  NOT_AN_ORIGIN,
  NOT_A_NUMBER,
  OUT_OF_RANGE,
  NOT_A_BOOLEAN,
  INVALID_APPLICATION_ID,
  UNKNOWN_WORD,
  UNKNOWN_KEY,
  UNKNOWN_ELEMENT,
  UNEXPECTED_CHILD,
  REPEATED,
  UNUSED_SETTING,
  /// Never reported by the parser:
  PARTIAL_NUMBER,     ///< a number is followed by text that is ignored
  UNKNOWN_ATTRIBUTE,  ///< no such attribute
  FOREIGN_ELEMENT,    ///< an element of another vocabulary
  MISPLACED,          ///< an element of this vocabulary, or text, where it is not read
  NOT_READ,           ///< behind a child at which reading stopped
  SIMILAR_KEY,        ///< an unknown key that is allowed, spelt almost like a known one
  UNUSED_LANGUAGE,    ///< nobody gets the element
  OTHER_LANGUAGE,     ///< this user gets another element
  UNUSED_ATTRIBUTE,   ///< without effect beside another attribute
  SUSPICIOUS_VALUE,   ///< probably not what was meant
  /// Of a packaged document:
  MISSING_FILE,     ///< a file that is not in the package, or no start file
  OUTSIDE_PACKAGE,  ///< a path that leads out of the package
  UNKNOWN_TYPE,     ///< a media type that files of packages do not have
  AMBIGUOUS_NAME    ///< two files of one name, or of names that differ by case only
};

/// The code of what the parser reports.
[[nodiscard]] constexpr FindingCode codeOf(config::FindingCode code) noexcept {
  return static_cast<FindingCode>(code);
}
static_assert(codeOf(config::FindingCode::NUMBER_REJECTED) == FindingCode::NUMBER_REJECTED &&
                  codeOf(config::FindingCode::UNUSED_SETTING) == FindingCode::UNUSED_SETTING,
              "the parser's codes come first, in the order of their numbers");

}  // namespace orvane::nimbrel::check
