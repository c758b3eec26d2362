#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "util/xml/XmlTree.h"

namespace orvane::nimbrel::util::internal {

/// Thrown to reject a document at the place that is being read. Never leaves `XmlReading`.
struct XmlRejection {
  const char* message;
};

/// Bounds what a document may make of itself; see `XmlParserLibXml` for the limits. What counts
/// something throws `XmlRejection` once there is too much of it.
class XmlLimits {
 public:
  static constexpr std::size_t MAX_DEPTH = 256;
  static constexpr const char* TOO_DEEP = "Elements are nested too deeply";
  static constexpr const char* TOO_MANY_NAMES = "Too many different names";

  /// `inputSize` is what is known of the size of the document in bytes.
  explicit XmlLimits(std::size_t inputSize) noexcept : inputSize_(inputSize) {}

  /// More is known of the size; the entities may grow accordingly.
  void noteInputSize(std::size_t inputSize) noexcept { inputSize_ = inputSize; }

  void openElement(std::size_t attributes, std::size_t namespaces) {
    if (depth_ >= MAX_DEPTH) {
      throw XmlRejection{TOO_DEEP};
    }
    checkOpenTag(attributes, namespaces);
    namespacesOf_[depth_++] = static_cast<std::uint16_t>(namespaces);
    namespacesInScope_ += namespaces;
    if (namespaceDefaults_ != 0) {
      lookUpDefaults();
    }
  }
  void closeElement() noexcept {
    if (depth_ > 0) {
      namespacesInScope_ -= namespacesOf_[--depth_];
    }
  }
  static void checkLanguage(const XmlSymbol& attribute, std::string_view value) {
    if (value.size() > MAX_LANGUAGE_TAG) {
      checkLong(attribute);
    }
  }
  /// An attribute that was not written but comes from the document type; the bytes of its name,
  /// prefix and value.
  void useDefault(std::size_t bytes);
  void declareDefault(std::string_view attribute);
  /// What an entity that is declared would make of one tag when it is used.
  static void checkTags(std::string_view entityContent);
  /// Each reference, nested ones included, wherever it stands and however often.
  void useEntity(std::string_view content);
  /// libxml2's dictionary of names has a fixed number of slots, and a size that it may not exceed.
  static void checkNames(int count, std::size_t bytes);
  /// Whether it has become so large that libxml2 may not have found room for a name.
  [[nodiscard]] static bool isFullOfNames(std::size_t bytes) noexcept;
  /// A start tag that has not ended yet, of which so much is known.
  void checkOpenTag(std::size_t attributes, std::size_t namespaces) const {
    if (attributes > MAX_ATTRIBUTES) {
      throw XmlRejection{TOO_MANY_ATTRIBUTES};
    }
    if (namespaces + namespacesInScope_ > MAX_NAMESPACES) {
      throw XmlRejection{"Too many namespace declarations in scope"};
    }
  }
  /// libxml2 compares the choices of an attribute each with each, and frees them by recursion.
  static void checkChoices(std::size_t choices);

 private:
  static constexpr std::size_t MAX_ATTRIBUTES = 2000;
  static constexpr std::size_t MAX_NAMESPACES = 1000;
  // Every run of a localised text carries its tag; a long one would be multiplied by their number.
  static constexpr std::size_t MAX_LANGUAGE_TAG = 128;

  static constexpr const char* TOO_MANY_ATTRIBUTES = "Too many attributes in one element";

  static void checkLong(const XmlSymbol& attribute);
  void lookUpDefaults();
  void expand(std::size_t bytes);

  std::size_t inputSize_;
  std::size_t expanded_ = 0;           // bytes that entities and defaulted attributes have added
  std::size_t attributeDefaults_ = 0;  // in the document type, namespaces included
  std::size_t namespaceDefaults_ = 0;
  std::size_t namespacesInScope_ = 0;
  std::size_t depth_ = 0;
  std::array<std::uint16_t, MAX_DEPTH> namespacesOf_;  // of each open element, from the root down
};

}  // namespace orvane::nimbrel::util::internal
