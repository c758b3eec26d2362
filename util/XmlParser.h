#pragma once

#include "util/Api.h"
#include "util/SharedPtr.h"
#include "util/XmlDocument.h"

namespace orvane::nimbrel::util {

/// Makes a document of bytes; a host may put its own source of documents behind it.
///
/// Const members may run on several threads at once. A parse that throws leaves nothing behind and
/// the parser as it was (strong guarantee).
class NIMBREL_UTIL_API XmlParser {
 public:
  virtual ~XmlParser();

  /// Reads a local regular file. `encoding` is an IANA name that overrides what the document says;
  /// null or empty: detect. Throws `ParseException` when the file cannot be read or is no
  /// well-formed XML. Never returns null.
  std::shared_ptr<XmlDocument> parse(const char* path, const char* encoding) const;

  /// Reads `size` bytes at `buffer`, which is not kept. `url` names the document, null for none;
  /// nothing is ever read from there. `encoding` as above. Throws `ParseException` when the bytes
  /// are no well-formed XML. Never returns null.
  std::shared_ptr<XmlDocument> parse(const char* buffer, unsigned int size, const char* url,
                                     const char* encoding) const;

 protected:
  XmlParser() = default;
  XmlParser(const XmlParser&) = default;
  XmlParser& operator=(const XmlParser&) = default;

  /// Does what `parse` of a path promises.
  [[nodiscard]] virtual std::shared_ptr<XmlDocument> parseFile(const char* path,
                                                               const char* encoding) const = 0;
  /// Does what `parse` of a buffer promises.
  [[nodiscard]] virtual std::shared_ptr<XmlDocument> parseBuffer(const char* buffer,
                                                                 unsigned int size, const char* url,
                                                                 const char* encoding) const = 0;
};

}  // namespace orvane::nimbrel::util
