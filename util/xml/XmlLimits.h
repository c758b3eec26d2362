#pragma once

#include <libxml/xmlstring.h>

#include <array>
#include <cstddef>
#include <cstdint>

#include "util/xml/LibXml.h"

namespace orvane::nimbrel::util::internal {

/// Bounds what a document may make of itself; see `XmlParserLibXml` for the limits. What counts
/// something gives the message of a rejection once there is too much of it, and null before.
class XmlLimits {
 public:
  static constexpr std::size_t MAX_DEPTH = 256;
  static constexpr const char* TOO_LONG = "A text is too long";
  static constexpr const char* TOO_DEEP = "Elements are nested too deeply";
  static constexpr const char* TOO_MANY_NAMES = "Too many different names";

  /// `inputSize` is what is known of the size of the document in bytes.
  explicit XmlLimits(std::size_t inputSize) noexcept : inputSize_(inputSize) {}

  /// More bytes are known than before; the entities may grow accordingly.
  void noteInputSize(std::size_t inputSize) noexcept;

  [[nodiscard]] const char* openElement(std::size_t attributes, std::size_t namespaces) noexcept {
    if (depth_ >= MAX_DEPTH) {
      return TOO_DEEP;
    }
    if (const char* const message = checkOpenTag(attributes, namespaces)) {
      return message;
    }
    namespacesOf_[depth_++] = static_cast<std::uint16_t>(namespaces);
    namespacesInScope_ += namespaces;
    return namespaceDefaults_ == 0 ? nullptr : lookUpDefaults();
  }
  void closeElement() noexcept {
    if (depth_ > 0) {
      namespacesInScope_ -= namespacesOf_[--depth_];
    }
  }
  /// One attribute, in libxml2's five pointers: local name, prefix, namespace, value and its end.
  [[nodiscard]] static const char* checkLanguage(const xmlChar* const* attribute) noexcept {
    return attribute[4] - attribute[3] > MAX_LANGUAGE_TAG ? checkLong(attribute) : nullptr;
  }
  /// One that was not written but comes from the document type.
  [[nodiscard]] const char* useDefault(const xmlChar* const* attribute) noexcept;
  [[nodiscard]] const char* declareDefault(const xmlChar* attribute) noexcept;
  /// What an entity that is declared would make of one tag when it is used.
  [[nodiscard]] static const char* checkTags(const xmlChar* entityContent) noexcept;
  /// Each reference, nested ones included, wherever it stands and however often.
  [[nodiscard]] const char* useEntity(const xmlChar* content) noexcept;
  /// libxml2's dictionary of names has a fixed number of slots, and a size that it may not exceed.
  [[nodiscard]] static const char* checkNames(xmlParserCtxt* context) noexcept;
  /// Whether it has become so large that libxml2 may not have found room for a name.
  [[nodiscard]] static bool isFullOfNames(xmlParserCtxt* context) noexcept;
  /// A start tag that has not ended yet, of which so much is known.
  [[nodiscard]] const char* checkOpenTag(std::size_t attributes,
                                         std::size_t namespaces) const noexcept {
    return attributes > MAX_ATTRIBUTES                        ? TOO_MANY_ATTRIBUTES
           : namespaces + namespacesInScope_ > MAX_NAMESPACES ? TOO_MANY_NAMESPACES
                                                              : nullptr;
  }
  /// libxml2 compares the choices of an attribute each with each, and frees them by recursion.
  [[nodiscard]] static const char* checkChoices(std::size_t choices) noexcept;

 private:
  static constexpr std::size_t MAX_ATTRIBUTES = 2000;
  static constexpr std::size_t MAX_NAMESPACES = 1000;
  // Every run of a localised text carries its tag; a long one would be multiplied by their number.
  static constexpr std::ptrdiff_t MAX_LANGUAGE_TAG = 128;

  static constexpr const char* TOO_MANY_ATTRIBUTES = "Too many attributes in one element";
  static constexpr const char* TOO_MANY_NAMESPACES = "Too many namespace declarations in scope";

  static const char* checkLong(const xmlChar* const* attribute) noexcept;
  const char* lookUpDefaults() noexcept;
  const char* expand(std::size_t bytes) noexcept;

  std::size_t inputSize_;
  std::size_t expanded_ = 0;           // bytes that entities and defaulted attributes have added
  std::size_t attributeDefaults_ = 0;  // in the document type, namespaces included
  std::size_t namespaceDefaults_ = 0;
  std::size_t namespacesInScope_ = 0;
  std::size_t depth_ = 0;
  std::array<std::uint16_t, MAX_DEPTH> namespacesOf_;  // of each open element, from the root down
};

}  // namespace orvane::nimbrel::util::internal
