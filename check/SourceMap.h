#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "check/SourceText.h"

namespace orvane::nimbrel::check {

/// An attribute as it is written in a start tag.
struct TagAttribute {
  Span name;   ///< with its prefix
  Span value;  ///< between the quotes
};

/// A start tag as it is written.
struct Tag {
  Span name;                               ///< of the element, with its prefix
  std::vector<TagAttribute> attributes;    ///< in the order of the document
  std::vector<TagAttribute> declarations;  ///< of namespaces
};

/// The offsets of "<" of all start tags of a text, in document order: the n-th is that of the n-th
/// element, unless an entity brought some. The text must be a well-formed document; of another one
/// what is found means nothing. Throws only `std::bad_alloc`.
[[nodiscard]] std::vector<std::uint32_t> startTagsOf(std::string_view text);

/// The offsets of "</" of the end tags of the same elements, in the order of their start tags; 0
/// for an element without one ("<a/>"). Throws only `std::bad_alloc`.
[[nodiscard]] std::vector<std::uint32_t> endTagsOf(std::string_view text);

/// The first text directly in the element whose "<" stands at `offset`, without white space around
/// it; empty at the end of the text when there is none. Takes as long as the element, at most.
/// Never throws.
[[nodiscard]] Span textIn(std::string_view text, std::size_t offset) noexcept;

/// The offset behind a document type, of which what follows "<!" begins at `at`. Never throws.
[[nodiscard]] std::size_t behindDoctype(std::string_view text, std::size_t at) noexcept;

/// Reads the start tag whose "<" stands at `offset`. Throws only `std::bad_alloc`.
[[nodiscard]] Tag readTag(std::string_view text, std::size_t offset);

}  // namespace orvane::nimbrel::check
