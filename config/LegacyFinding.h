#pragma once

#include <cstdint>
#include <string_view>

namespace orvane::nimbrel::config {

/// What became of a value that did not arrive in the record.
enum class FindingLevel {
  NOTE,     ///< another value was a better match
  WARNING,  ///< something is lost
  ERROR     ///< the parse fails
};

/// Every kind of decision that loses or overrides something; `findingKind` describes each.
///
/// Codes are stable: new ones join at the end, and none changes its meaning within a major version.
enum class LegacyCode {
  DOCUMENT_REFUSED,
  ROOT_NOT_WIDGET,
  REQUIRED_FEATURE_NAME,
  COUNTER_REFUSED,
  LANGUAGE_LOST,
  OTHER_LANGUAGE,
  BETTER_LANGUAGE,
  UNKNOWN_ELEMENT,
  FOREIGN_ELEMENT,
  PARAM_OUTSIDE_FEATURE,
  UNKNOWN_ATTRIBUTE,
  UNKNOWN_DIRECTION,
  ID_NOT_IRI,
  VERSION_EMPTY,
  APPLICATION_ID,
  NUMBER_DROPPED,
  NUMBER_CUT,
  REPEATED_VIEWMODE,
  DEFAULTLOCALE_EMPTY,
  REPEATED_ELEMENT,
  HREF_NOT_IRI,
  CONTENT_WITHOUT_SRC,
  ICON_WITHOUT_SRC,
  REPEATED_ICON,
  PREFERENCE_WITHOUT_NAME,
  REPEATED_PREFERENCE,
  NOT_BOOLEAN,
  FEATURE_WITHOUT_NAME,
  FEATURE_NAME,
  PARAM_INCOMPLETE,
  ACCESS_WITHOUT_ORIGIN,
  ORIGIN_NOT_IRI,
  ORIGIN_TOO_LONG,
  ORIGIN_WITHOUT_HOST,
  ORIGIN_WITHOUT_PORT,
  HOST_WITHOUT_ASCII,
  SUBDOMAINS_UNUSED,
  UNEXPECTED_CHILD,
  MISSING_ATTRIBUTE,
  NOT_REACHED,
  UNKNOWN_KEY,
  SIMILAR_KEY,
  REPEATED_KEY,
  UNKNOWN_WORD,
  VALUE_REFUSED,
  BETTER_DENSITY,
  SETTINGS_RESTARTED,
  EXPORT_WITHOUT_RESOURCE,
  REPEATED_EXPORT
};

/// One decision of a parse, as an observer is told of it. All text is UTF-8; the views are valid
/// during the call only.
struct LegacyFinding {
  LegacyCode code;  ///< what it is; `findingKind` tells more
  /// Name of the element, extension elements with the prefix "tavlo:" whatever the document's;
  /// empty when the whole document is meant.
  std::string_view element;
  /// Name of the attribute, in the same spelling; empty when the element itself is meant.
  std::string_view attribute;
  /// Line in which the element begins, counted from 1; 0 when unknown.
  std::uint32_t line;
  /// Column, counted from 1; 0 when unknown, as it is of all but malformed documents.
  std::uint32_t column;
  /// The offending value as the parser read it; null data when there is none.
  std::string_view value;
  /// Why, in one sentence.
  std::string_view reason;
  /// What was meant, where that is certain: another name or value. Empty otherwise.
  std::string_view suggestion;
};

}  // namespace orvane::nimbrel::config
