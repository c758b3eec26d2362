#pragma once

#include <cstdint>
#include <string_view>

#include "config/ElementDescription.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::config {

/// What a parser decided about something; element and attribute of the finding say about what. The
/// numbers are fixed: those of later codes follow.
enum class FindingCode : std::uint8_t {
  // These end the parse:
  DOCUMENT_REJECTED = 0,  ///< not well-formed, or beyond a limit of the XML layer
  /// The root is not `widget` of the W3C namespace; the value is its namespace if that is wrong.
  WRONG_ROOT = 1,
  REQUIRED_FEATURE_NAME = 2,  ///< the name of a required feature is not an IRI
  NUMBER_REJECTED = 3,  ///< a counter or quota is empty, ends in white space or is above 32 bits
  // These do not:
  MISSING_ATTRIBUTE = 4,        ///< absent, or empty where that is the same
  EMPTY_VALUE = 5,              ///< an empty value that counts as absent
  NOT_AN_IRI = 6,               ///< an identifier, link or name
  NOT_AN_ORIGIN = 7,            ///< the origin of an access request
  NOT_A_NUMBER = 8,             ///< the attribute is ignored
  OUT_OF_RANGE = 9,             ///< a number too small or too large, or too many entries
  NOT_A_BOOLEAN = 10,           ///< neither "true" nor "false"
  INVALID_APPLICATION_ID = 11,  ///< not an id of the application store
  UNKNOWN_WORD = 12,            ///< none of the words of a switch
  UNKNOWN_KEY = 13,             ///< no setting of this name
  UNKNOWN_ELEMENT = 14,         ///< no handler, whatever the namespace
  UNEXPECTED_CHILD = 15,        ///< a child at which reading of the element stops
  REPEATED = 16,                ///< ignored, because an earlier one counts
  UNUSED_SETTING = 17           ///< a font size is stored already
};

/// One decision of a parse, as an observer receives it. All text is UTF-8; the views are valid
/// during the call only.
struct Finding {
  FindingCode code;  ///< what it is
  /// The element, valid as long as its document; null when the whole document is meant.
  const util::XmlNode* element;
  /// The row of the attribute in the description of the element, which says its name; it lives as
  /// long as the library. Null when the element itself is meant.
  const AttributeDescription* attribute;
  /// The offending value as the parser read it; null data when there is none.
  std::string_view value;
  /// Line in which the element begins, counted from 1; 0 when unknown.
  std::uint32_t line;
  /// Column, counted from 1; 0 when unknown, as it is of all but `DOCUMENT_REJECTED`.
  std::uint32_t column;
  /// Of `DOCUMENT_REJECTED`: the text of the exception. Empty otherwise.
  std::string_view message;
};

}  // namespace orvane::nimbrel::config
