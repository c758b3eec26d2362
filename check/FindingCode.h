#pragma once

#include <cstddef>
#include <string_view>

#include "config/ElementDescription.h"
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
  INVALID_VALUE,      ///< kept as written, but of no use to anybody
  SUSPICIOUS_VALUE,   ///< probably not what was meant
  /// Of a packaged document:
  MISSING_FILE,     ///< a file that is not in the package, or no start file
  OUTSIDE_PACKAGE,  ///< a path that leads out of the package
  UNKNOWN_TYPE,     ///< a media type that files of packages do not have
  AMBIGUOUS_NAME,   ///< two files of one name, or of names that differ by case only
  UNLISTED_BYTES,   ///< bytes of the package that belong to no entry
  UNUSABLE_PACKAGE  ///< no usable archive, or none with one document; found by who unpacks it
};

/// The code of what the parser reports.
[[nodiscard]] constexpr FindingCode codeOf(config::FindingCode code) noexcept {
  return static_cast<FindingCode>(code);
}
static_assert(codeOf(config::FindingCode::NUMBER_REJECTED) == FindingCode::NUMBER_REJECTED &&
                  codeOf(config::FindingCode::UNUSED_SETTING) == FindingCode::UNUSED_SETTING,
              "the parser's codes come first, in the order of their numbers");

/// How bad a finding is.
enum class Level {
  NOTE,     ///< nothing is wrong, but it may not be what was meant
  WARNING,  ///< something is ignored, or does not work in its package
  ERROR     ///< the document is rejected
};

/// "error", "warning" or "note". For any thread; never throws.
[[nodiscard]] std::string_view levelName(Level level) noexcept;

/// What a code means to an author.
struct CodeDescription {
  FindingCode code;          ///< which code this is
  std::string_view name;     ///< stable, lower case with hyphens, such as "not-an-iri"
  Level level;               ///< how bad it is
  std::string_view summary;  ///< what is wrong and what to write, in one sentence
  /// A document with this finding: the children of the root, or a whole document if it begins with
  /// "<widget". A comment in front names the files of its package, where one is needed.
  std::string_view bad;
  std::string_view fixed;  ///< the same without it; empty where nothing has to be fixed
};

/// The description of a code. For any thread; never throws.
[[nodiscard]] const CodeDescription& descriptionOf(FindingCode code) noexcept;

/// All descriptions, in the order of their codes. For any thread; never throws.
[[nodiscard]] config::DescriptionList<CodeDescription> codeDescriptions() noexcept;

}  // namespace orvane::nimbrel::check
