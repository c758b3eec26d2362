#pragma once

#include "util/Api.h"
#include "util/XmlParser.h"

namespace orvane::nimbrel::util {

/// The XML parser over libxml2's SAX2 events, for libxml2 2.9.14 and later.
///
/// Reads XML 1.0 with namespaces from untrusted input, and nothing else:
/// - Nothing outside the given bytes is ever read: an external entity counts as an empty one, an
///   external subset, an XInclude or a URL is ignored.
/// - Internal entities and defaulted attributes of the internal subset count. Together they may
///   grow a document to five times its size plus one million bytes, each use counting some bytes
///   more than it brings; beyond that it is rejected.
/// - Elements nest up to 256 deep, an element has at most 2,000 attributes and an `xml:lang` 128
///   bytes, 1,000 namespace declarations are in scope at most, there are some 100,000 different
///   names, prefixes and namespaces, some 5,000 choices ("|") in the document type, and 100
///   instructions that name a catalogue before the root; beyond that the document is rejected. So
///   is a name, an attribute, a CDATA section, a comment or an instruction that libxml2 finds too
///   long (ten million bytes, for a name fifty thousand). A text may be as long as it likes.
/// - A reference to an internal parameter entity rejects the document, unless the entity is empty.
/// - A broken namespace rule rejects no document: an element or attribute with an undeclared
///   prefix keeps its name as written and has no namespace.
/// - The encodings are UTF-8, UTF-16, UTF-32, US-ASCII, most of ISO-8859, windows-874 and 1250 to
///   1258, TIS-620, KOI8-R, KOI8-U, Shift_JIS, EUC-JP, EUC-KR, GB2312, GBK, GB18030 and Big5, under
///   the names that IANA has for them; a document in any other is rejected. No file is opened for
///   them. A byte order mark counts for more than a declaration, and the argument for more than
///   both.
/// - A path names a local regular file, "-" included; directories, FIFOs and devices are rejected
///   without being opened, compressed files are not unpacked.
/// - Buffers and files of 2 GiB and more, null and empty buffers are rejected.
///
/// Rejected means `ParseException`, as is everything when the libxml2 that is loaded does not fit
/// the one that this library was built for; running out of memory is `std::bad_alloc`. Nothing is
/// written to standard error and nothing in libxml2 is touched that a host could notice, but for
/// its initialisation: neither its handlers and loaders nor its last error. A thread is not
/// cancelled within a parse, but at the next cancellation point behind it. Stateless: any number of
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
