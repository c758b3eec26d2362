#pragma once

#include <cstddef>
#include <string_view>

namespace orvane::nimbrel::util::internal {

// An encoding of a document is the name by which ICU knows it without opening a file.

/// The encoding of a name that a document or a caller gives, or null when it is not accepted.
/// Nothing is ever loaded or opened to find out, and neither libxml2 nor iconv is asked.
const char* findEncoding(std::string_view name) noexcept;

/// Whether libxml2 can read the encoding as it is.
bool isUtf8(std::string_view encoding) noexcept;
/// Whether its units have two or four bytes. Any other begins with ASCII.
bool isWide(std::string_view encoding) noexcept;

/// The encoding that a byte order mark, or a "<" in wide units, shows at the beginning; null when
/// there is neither. Throws `ParseException` for EBCDIC.
const char* encodingShownBy(std::string_view document);

/// The encoding with the order of bytes in which a document in it begins, if that is not in its
/// name.
const char* withByteOrder(const char* encoding, std::string_view document) noexcept;

/// The encoding that a document declares, and where.
struct XmlDeclaration {
  std::string_view encoding;  ///< empty: none
  std::size_t end = 0;        ///< behind the name and its quotation mark
  bool isIncomplete = false;  ///< it goes on where the text ends
};

/// Reads the declaration at the beginning of a document in UTF-8. Finds no encoding in one that
/// libxml2 will reject.
XmlDeclaration declarationOf(std::string_view document) noexcept;

}  // namespace orvane::nimbrel::util::internal
