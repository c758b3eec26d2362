#pragma once

#include <libxml/parser.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "util/ParseException.h"
#include "util/XmlDocument.h"
#include "util/XmlTree.h"

namespace orvane::nimbrel::util::internal {

/// Fills a document from the SAX2 events of one libxml2 context, and bounds what a document may
/// make of itself. Lives on the stack of one parse; see `XmlParserLibXml` for the limits.
///
/// The context finds its builder in `_private`, which libxml2 hands down to the contexts that it
/// makes for the contents of entities; their events arrive here too.
class XmlTreeBuilder {
 public:
  /// Installs itself in the context. `inputSize` is what is known of the size in bytes.
  XmlTreeBuilder(xmlParserCtxt* context, std::size_t inputSize);
  XmlTreeBuilder(const XmlTreeBuilder&) = delete;
  XmlTreeBuilder& operator=(const XmlTreeBuilder&) = delete;

  /// More bytes are known than before; the entities may grow accordingly.
  void noteInputSize(std::size_t inputSize) noexcept;

  /// Refuses the document and stops the parser if the start tag that libxml2 is reading has more
  /// attributes or namespaces than allowed: it compares each with each when the tag ends. Called
  /// whenever libxml2 asks for more bytes. False when the parser was stopped.
  bool checkOpenTag() noexcept;

  /// Refuses the document, with the present position, and stops the parser.
  void refuse(const char* message) noexcept;

  /// The document, once libxml2 is done. Throws why there is none: `ParseException`, or what went
  /// wrong in a callback.
  std::shared_ptr<XmlDocument> finish();

 private:
  struct Callbacks;
  struct Symbol {
    const xmlChar* key;  // libxml2's dictionary gives equal names of a document one address
    const XmlSymbol* symbol;
  };

  void startElement(const xmlParserCtxt* context, const xmlChar* localName, const xmlChar* prefix,
                    const xmlChar* uri, int attributeCount, int defaultedCount,
                    const xmlChar** attributes);
  void endElement() noexcept;
  void appendText(const char* text, std::size_t size);
  void appendOther(XmlNode::Type type);
  void noteError(const xmlError& error);

  void charge(std::size_t bytes) noexcept;
  void closeText() noexcept;
  void link(XmlNode* node) noexcept;
  XmlNode* newNode(XmlNode::Type type, unsigned int line);
  char* copy(const char* text, std::size_t size);
  const XmlSymbol* newSymbol(std::string_view prefix, std::string_view name);
  const XmlSymbol* intern(const xmlChar* name);
  const XmlSymbol* internQualified(const xmlChar* localName, const xmlChar* prefix,
                                   const xmlChar* uri);
  void growSymbols();
  [[nodiscard]] unsigned int line() const noexcept;
  [[nodiscard]] unsigned int lineOfOpenTag(const xmlParserCtxt* context) const noexcept;
  [[nodiscard]] unsigned int column() const noexcept;

  xmlParserCtxt* context_;
  std::shared_ptr<XmlDocument> document_;
  XmlArena* arena_;

  struct OpenElement {
    XmlNode* node;
    XmlNode* lastChild;
  };
  std::vector<OpenElement> open_;
  XmlNode* text_ = nullptr;  // the text node that grows; its bytes end at textEnd_
  char* textEnd_ = nullptr;
  std::size_t textCapacity_ = 0;
  unsigned int lastLine_ = 1;  // where the last event ended, and so where a text that follows begins

  std::vector<Symbol> symbols_;
  std::size_t symbolCount_ = 0;

  std::size_t inputSize_;
  std::size_t expanded_ = 0;  // bytes that entities and defaulted attributes have added
  int attributeDeclarations_ = 0;

  bool stopped_ = false;
  std::optional<ParseException> refusal_;
  std::optional<ParseException> error_;  // the first that makes the document ill-formed
  bool outOfMemory_ = false;
  std::exception_ptr exception_;  // must not pass through libxml2
};

}  // namespace orvane::nimbrel::util::internal
