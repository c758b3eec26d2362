#pragma once

#include "util/Api.h"
#include "util/XmlParser.h"

namespace orvane::nimbrel::util {

/// The XML parser over libxml2's SAX2 events.
///
/// Reads XML 1.0 with namespaces, hostile or not, and nothing else:
/// - Nothing outside the given bytes is ever read: an external entity counts as an empty one, an
///   external subset, an XInclude or a URL is ignored.
/// - Internal entities and defaulted attributes of the internal subset count. Together they may
///   grow a document to five times its size plus one million bytes, each use counting some bytes
///   more than it brings; beyond that it is refused.
/// - Elements nest up to 256 deep, an element has at most 2,000 attributes and an `xml:lang` 128
///   bytes, 1,000 namespace declarations are in scope at most, there are some 100,000 different
///   names, prefixes and namespaces, and some 5,000 choices ("|") in the document type; beyond that
///   the document is refused. So is a name, an attribute, a CDATA section, a comment or an
///   instruction that libxml2 finds too long (ten million bytes, for a name fifty thousand). A text
///   may be as long as it likes.
/// - A broken namespace rule refuses no document: an element or attribute with an undeclared
///   prefix keeps its name as written and has no namespace.
/// - A path names a local regular file, "-" included; directories, FIFOs and devices are refused
///   at once, compressed files are not unpacked.
/// - Buffers and files of 2 GiB and more, null or empty buffers and unknown encodings are refused.
///
/// Refused means `ParseException`; running out of memory is `std::bad_alloc`. Nothing is written to
/// standard error and nothing in libxml2 is touched that a host could notice, but for its
/// initialisation: neither its handlers and loaders nor its last error. Stateless: any number of
/// threads may share one parser.
class NIMBREL_UTIL_API XmlParserLibXml : public XmlParser {
 public:
  XmlParserLibXml();
  ~XmlParserLibXml() override;

 protected:
  [[nodiscard]] std::shared_ptr<XmlDocument> parseFile(const char* path,
                                                       const char* encoding) const override;
  [[nodiscard]] std::shared_ptr<XmlDocument> parseBuffer(const char* buffer, unsigned int size,
                                                         const char* url,
                                                         const char* encoding) const override;
};

}  // namespace orvane::nimbrel::util
