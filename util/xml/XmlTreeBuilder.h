#pragma once

#include <libxml/parser.h>

#include <array>
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
#include "util/xml/XmlArena.h"
#include "util/xml/XmlTree.h"

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

  /// To be asked whenever libxml2 wants more bytes: false once the document is refused, and then
  /// the input must end there. This is the only moment at which a start tag or a declaration that
  /// goes on and on can be noticed: libxml2 compares each of its parts with each of the others.
  ///
  /// Must not stop the parser by itself: libxml2 would free the buffer it is about to fill.
  [[nodiscard]] bool wantsMore() noexcept;

  /// More bytes are known than before; the entities may grow accordingly.
  void noteInputSize(std::size_t inputSize) noexcept;

  /// No more bytes will follow.
  void noteEnd() noexcept { allKnown_ = true; }

  /// What libxml2 reports, with or without a context; the first that is fatal refuses the document.
  void noteError(const xmlError& error) noexcept;

  /// Refuses the document at the present position, unless it is already.
  void refuse(const char* message) noexcept;

  /// The document, once libxml2 is done. Throws why there is none: `ParseException`, or what went
  /// wrong in a callback.
  std::shared_ptr<XmlDocument> finish();

 private:
  struct Callbacks;
  struct Symbol {
    // libxml2's dictionary gives equal names of a document one address.
    const xmlChar* name;
    const xmlChar* namespaceUri;  // null: none
    const XmlSymbol* symbol;
  };

  void startElement(const xmlParserCtxt* context, const xmlChar* localName, const xmlChar* prefix,
                    const xmlChar* uri, int attributeCount, int defaultedCount,
                    const xmlChar** attributes);
  void endElement() noexcept;
  void appendText(const char* text, std::size_t size);
  void appendOther(XmlNode::Type type);

  void checkNames() noexcept;
  void noteMissingName() noexcept;
  void countNewChoices() noexcept;
  void countChoices(std::string_view declarations) noexcept;
  void charge(std::size_t bytes) noexcept;
  [[nodiscard]] bool somethingIsLeft() const noexcept;
  void closeText() noexcept;
  void askNoMore() noexcept;
  void link(XmlNode* node) noexcept;
  XmlNode* newNode(XmlNode::Type type, unsigned int line);
  char* copy(const char* text, std::size_t size);
  const XmlSymbol* newSymbol(const XmlSymbol* namespaceUri, std::string_view prefix,
                             std::string_view name);
  const XmlSymbol* intern(const xmlChar* name, const xmlChar* namespaceUri);
  const XmlSymbol* internNew(const xmlChar* name, const xmlChar* namespaceUri);
  const XmlSymbol* internQualified(const xmlChar* localName, const xmlChar* prefix,
                                   const xmlChar* uri);
  void growSymbols();
  Symbol& slotFor(const xmlChar* name, const xmlChar* namespaceUri) noexcept;
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
  static constexpr std::size_t MAX_DEPTH = 256;
  std::array<OpenElement, MAX_DEPTH> open_;  // the first `depth_` of them, from the root down
  std::size_t depth_ = 0;
  XmlNode* text_ = nullptr;  // the text node that grows; its bytes end at textEnd_
  char* textEnd_ = nullptr;
  std::size_t textCapacity_ = 0;
  unsigned int lastLine_ =
      1;  // where the last event ended, and so where a text that follows begins

  std::size_t symbolMask_ = 127;
  std::vector<Symbol> symbols_;  // a power of two of them, at most half taken
  std::size_t symbolCount_ = 0;

  std::size_t inputSize_;
  std::size_t expanded_ = 0;           // bytes that entities and defaulted attributes have added
  std::size_t attributeDefaults_ = 0;  // in the DTD, namespaces included
  std::size_t namespaceDefaults_ = 0;
  std::size_t choices_ = 0;  // "|" in the DTD
  std::size_t choicesCountedTo_ = 0;

  bool allKnown_ = false;  // libxml2 has all bytes, and has not been told so
  bool stopped_ = false;   // let nothing more happen
  std::optional<ParseException> refusal_;
  bool outOfMemory_ = false;
  std::exception_ptr exception_;  // must not pass through libxml2
};

}  // namespace orvane::nimbrel::util::internal
