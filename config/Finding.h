#pragma once

#include <cstdint>
#include <string_view>

#include "util/XmlNode.h"

namespace orvane::nimbrel::config {

/// What an author has to do about a decision; element and attribute of the finding say where.
///
/// The parser reports the codes of the first group as it decides. Those of the second group need no
/// decision of the parser: a checker finds them in the tree.
enum class FindingCode {
  /// @{
  /// Reported by the parser. These end the parse:
  DOCUMENT_REJECTED,  ///< not well-formed, or beyond a limit of the XML layer
  WRONG_ROOT,         ///< the root is not `widget` of the W3C namespace; "xmlns" if that is wrong
  REQUIRED_FEATURE_NAME,  ///< the name of a required feature is not an IRI
  NUMBER_REJECTED,        ///< a counter or quota is empty, ends in white space or is above 32 bits
  /// These do not:
  MISSING_ATTRIBUTE,       ///< absent, or empty where that is the same
  EMPTY_VALUE,             ///< an empty value that counts as absent
  NOT_AN_IRI,              ///< an identifier, link or name
  NOT_AN_ORIGIN,           ///< the origin of an access request
  NOT_A_NUMBER,            ///< the attribute is ignored
  OUT_OF_RANGE,            ///< a number too small or too large, or too many entries
  NOT_A_BOOLEAN,           ///< neither "true" nor "false"
  INVALID_APPLICATION_ID,  ///< not an id of the application store
  UNKNOWN_WORD,            ///< none of the words of a switch
  UNKNOWN_KEY,             ///< no setting of this name
  UNKNOWN_ELEMENT,         ///< no handler, whatever the namespace
  UNEXPECTED_CHILD,        ///< a child at which reading of the element stops
  REPEATED,                ///< ignored, because an earlier one counts
  UNUSED_SETTING,          ///< a font size is stored already
  /// @}
  /// @{
  /// Never reported by the parser.
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
  AMBIGUOUS_NAME,   ///< two files of one name, or of names that differ by case only
  /// @}
};

/// One decision of a parse, as an observer receives it. All text is UTF-8; the views are valid
/// during the call only.
struct Finding {
  FindingCode code;  ///< what it is
  /// The element, valid as long as its document; null when the whole document is meant.
  const util::XmlNode* element;
  /// Local name of the attribute, with the prefix "tavlo:" for extension attributes and "xml:" for
  /// `xml:lang`; empty when the element itself is meant.
  std::string_view attribute;
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
