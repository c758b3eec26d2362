#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace orvane::nimbrel::util::internal {

/// One of the encodings that a document may have.
struct XmlEncoding {
  enum class Form {
    UTF_8,  ///< as libxml2 reads it
    BYTES,  ///< ASCII and more, in bytes
    WIDE    ///< in units of two or four bytes
  };
  const char* name;  ///< as ICU knows it, without opening a file
  Form form;
};

/// The encoding of a name in any case, or null when it is not accepted. Nothing is ever loaded or
/// opened to find out, and neither libxml2 nor iconv is asked.
const XmlEncoding* findEncoding(std::string_view name) noexcept;

/// The encoding that a byte order mark, or a "<" in wide units, shows at the beginning; null when
/// there is neither. Throws `ParseException` for EBCDIC.
const XmlEncoding* encodingShownBy(std::string_view document);

/// The same for a document that is known to be of an encoding: with its order of bytes, if that is
/// not in its name.
const XmlEncoding* withByteOrder(const XmlEncoding* encoding, std::string_view document);

/// The encoding that a document declares, and where.
struct XmlDeclaration {
  std::string_view encoding;  ///< empty: none
  std::size_t end = 0;        ///< behind the name and its quotation mark
  bool isIncomplete = false;  ///< it goes on where the text ends
};

/// Reads what begins a document, as UTF-8. Finds nothing in whatever libxml2 is to reject.
XmlDeclaration declarationOf(std::string_view document) noexcept;

}  // namespace orvane::nimbrel::util::internal
