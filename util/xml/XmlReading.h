#pragma once

#include <cstddef>
#include <exception>
#include <memory>
#include <utility>

#include "util/xml/LibXml.h"
#include "util/xml/XmlLimits.h"
#include "util/xml/XmlOutcome.h"
#include "util/xml/XmlTreeBuilder.h"

namespace orvane::nimbrel::util::internal {

/// One parse: a context of libxml2, whose events build a tree within limits. Lives on the stack.
///
/// External entities are declared as empty ones and so never read. Internal parameter entities may
/// be declared, but a reference to one rejects the document.
class XmlReading {
 public:
  /// `inputSize` is what is known of the size in bytes. Throws `ParseException` when libxml2 cannot
  /// be used, and `std::bad_alloc`.
  explicit XmlReading(std::size_t inputSize);
  XmlReading(const XmlReading&) = delete;
  XmlReading& operator=(const XmlReading&) = delete;

  [[nodiscard]] xmlParserCtxt* context() const noexcept { return context_.get(); }

  /// Rejects the document, at the present position or another, unless something has gone wrong
  /// before.
  void reject(const char* message) noexcept { reject(message, libxml::positionOf(context())); }
  void reject(const char* message, libxml::Position at) noexcept { outcome_.reject(message, at); }
  /// Something else ends the parse, which libxml2 must not see.
  void fail(std::exception_ptr failure) noexcept { outcome_.fail(std::move(failure)); }

  /// To be asked before libxml2 gets more bytes: false once something is wrong, and then the input
  /// must end there. `attributes` and `namespaces` are those of a start tag that still goes on:
  /// this is the only moment at which one can be noticed that never ends. So it is with `choices`
  /// ("|").
  [[nodiscard]] bool wantsMore(std::size_t attributes, std::size_t namespaces,
                               std::size_t choices) noexcept;

  /// More bytes are known than before.
  void noteInputSize(std::size_t inputSize) noexcept { limits_.noteInputSize(inputSize); }

  /// The document ends within a character, which rejects it if nothing before does.
  void noteCut() noexcept { isCut_ = true; }

  [[nodiscard]] bool isBeforeRoot() const noexcept { return tree_.isBeforeRoot(); }

  /// Lets libxml2 read the input that its context has been given, and gives the document. Throws
  /// what went wrong.
  std::shared_ptr<XmlDocument> run();

 private:
  struct Callbacks;
  static xmlSAXHandler callbacks() noexcept;
  // Not one of them: libxml2 calls that with another first argument at times.
  static void onError(void* reading, libxml::Error* error) noexcept {
    static_cast<XmlReading*>(reading)->noteError(*error);
  }

  void startElement(const xmlChar* localName, const xmlChar* prefix, const xmlChar* uri,
                    int namespaceCount, int attributeCount, int defaultedCount,
                    const xmlChar** attributes);
  void endElement() noexcept;
  void appendOther(XmlNode::Type type);
  void instruction(const xmlChar* target);
  void declareEntity(const xmlChar* name, int type, const xmlChar* publicId,
                     const xmlChar* systemId, xmlChar* content);
  void declareAttribute(const xmlChar* element, const xmlChar* name, const xmlChar* value) noexcept;
  xmlEntity* declareNothing(const xmlChar* name, int type);
  xmlEntity* useEntity(xmlEntity* entity) noexcept;
  xmlEntity* parameterEntity(const xmlChar* name);
  void noteError(const libxml::Error& error) noexcept;
  void noteMissingName() noexcept;
  bool isWithin(const char* message) noexcept;
  [[nodiscard]] unsigned int line() const noexcept {
    return libxml::positionOf(context_.get()).line;
  }

  XmlOutcome outcome_;
  libxml::ErrorGuard errors_;
  libxml::Context context_;
  XmlLimits limits_;
  XmlTreeBuilder tree_;
  std::size_t catalogues_ = 0;
  bool hasDocumentType_ = false;
  bool isCut_ = false;
  bool isDeclaringParameter_ = false;  // libxml2 asks for it once more
  bool hasInvalidUri_ = false;         // an external entity that libxml2 2.9 did not declare
};

}  // namespace orvane::nimbrel::util::internal
