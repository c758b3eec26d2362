#pragma once

#include <cstdint>
#include <limits>
#include <string_view>

#include "check/FindingCode.h"
#include "check/SourceText.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::check {

/// A finding with its place. Small, as a hostile document may have very many; what it says in words
/// is made when it is printed. The views and nodes live as long as the `Report` that has it.
struct Diagnostic {
  static constexpr std::uint32_t NO_INDEX = std::numeric_limits<std::uint32_t>::max();

  FindingCode code = {};
  /// Its place among the attributes of the element; `NO_INDEX` when it is absent.
  std::uint32_t attributeIndex = NO_INDEX;
  /// The element; null when the whole document is meant, or its package.
  const util::XmlNode* element = nullptr;
  /// The attribute as `displayName` spells it; empty when the element itself is meant.
  std::string_view attribute = {};
  /// The value as it was read; null data when there is none. Of a document that is rejected
  /// why.
  std::string_view value = {};
  /// A name of the package that explains it: the file that was meant, the one that others get, or
  /// the one with which another may be confused. Of an unknown element the name as it is written.
  /// Empty when there is none.
  std::string_view name = {};
  /// Another element that explains it, such as the one that counts; null when there is none.
  const util::XmlNode* other = nullptr;

  std::uint32_t line = 0;    ///< counted from 1; 0 when unknown
  std::uint32_t column = 0;  ///< of a rejected document as its parser counts; 0 when unknown
  Span span = {};            ///< the place in the text of the document
  bool hasSpan = false;      ///< whether `span` is known
  bool isOfPackage = false;  ///< the package is meant, not the document in it
  bool isText = false;       ///< the text in the element is meant; `value` is its beginning
  /// What orders the findings of a document: the number of the element, then of the finding.
  std::uint32_t elementNumber = 0;
  std::uint32_t number = 0;
};

}  // namespace orvane::nimbrel::check
