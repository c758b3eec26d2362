#pragma once

#include <cstddef>
#include <exception>
#include <memory>
#include <string_view>

#include "util/xml/LibXml.h"
#include "util/xml/XmlInput.h"
#include "util/xml/XmlLimits.h"
#include "util/xml/XmlOpenTagCounter.h"
#include "util/xml/XmlTreeBuilder.h"

namespace orvane::nimbrel::util::internal {

/// One parse: libxml2 reads an input, and its events build a tree within limits. Lives on the
/// stack.
///
/// Nothing may throw through libxml2. Its callbacks keep the first fault, which ends the parse;
/// what follows in the document is ignored.
class XmlReading {
 public:
  /// `input` must outlive this. Throws `ParseException` when libxml2 cannot be used, and
  /// `std::bad_alloc`.
  explicit XmlReading(XmlInput& input);
  XmlReading(const XmlReading&) = delete;
  XmlReading& operator=(const XmlReading&) = delete;

  /// Reads the input to its end. To be called once. Throws the first fault: `ParseException`,
  /// `std::bad_alloc`, and what the input throws.
  std::shared_ptr<XmlDocument> run();

 private:
  struct Callbacks;  // all that libxml2 calls

  void parse();
  // What the callbacks call. Except for those that cannot throw, they throw what ends the parse.
  std::size_t read(char* target, std::size_t size);
  void startElement(const XmlSymbol* name, std::size_t attributes, std::size_t namespaces);
  void endElement() noexcept;
  void appendOther(XmlNode::Type type);
  void instruction(std::string_view target);

  void checkNames() const;
  /// Rejects the document at the present place, unless there is a fault already.
  void reject(const char* message) noexcept;
  /// libxml2 has no memory for something, or no room for another name.
  void failForMemory() noexcept;

  [[nodiscard]] xmlParserCtxt* context() const noexcept { return context_.get(); }
  [[nodiscard]] unsigned int line() const noexcept { return libxml::positionOf(context()).line; }

  XmlInput& input_;
  std::exception_ptr fault_;
  libxml::Library library_;
  libxml::ErrorGuard errors_;
  libxml::Context context_;
  XmlLimits limits_;
  XmlTreeBuilder tree_;
  // A start tag that never ends, and too many choices, are found before libxml2 gets more bytes.
  XmlOpenTagCounter openTag_;
  std::size_t choices_ = 0;  // "|" before the root
  std::size_t catalogues_ = 0;
  bool hasDocumentType_ = false;
  bool isDeclaringParameter_ = false;  // libxml2 asks for it once more
  bool hasInvalidUri_ = false;         // an external entity that libxml2 2.9 did not declare
};

}  // namespace orvane::nimbrel::util::internal
