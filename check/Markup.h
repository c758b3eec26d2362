#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "check/SourceText.h"

// What stands where in the text of a document. Nothing here throws but `std::bad_alloc`; of a text
// that is not well-formed what is found means nothing, but for what one function says of it.
namespace orvane::nimbrel::check {

/// White space in XML.
inline constexpr std::string_view XML_SPACE = " \t\r\n";

/// Whether a character may stand in a document.
[[nodiscard]] bool isXmlCharacter(char32_t c) noexcept;
/// Whether this stands at a place.
[[nodiscard]] bool hasAt(std::string_view text, std::size_t at, std::string_view part) noexcept;
/// Where white space ends that begins at `at`, if any does.
[[nodiscard]] std::size_t skipSpace(std::string_view text, std::size_t at) noexcept;
/// A name; empty when none begins there.
[[nodiscard]] Span nameAt(std::string_view text, std::size_t begin) noexcept;
/// The value behind the name of an attribute, between its quotes; to the end of the text without
/// the second one. Nothing when no "=" and quote follow.
[[nodiscard]] std::optional<Span> valueBehind(std::string_view text, std::size_t nameEnd) noexcept;

/// A piece of markup, or the text up to the next one.
struct Token {
  enum Kind { TEXT, START_TAG, EMPTY_TAG, END_TAG, COMMENT, CDATA, INSTRUCTION, DOCTYPE };

  Kind kind;
  Span span;
  bool hasEnd;  ///< whether what ends a comment and the like is there
};

/// Reads what begins at `at`, which is not the end of the text.
[[nodiscard]] Token tokenAt(std::string_view text, std::size_t at) noexcept;

/// The offsets of "<" of the tags of an element.
struct ElementTags {
  std::uint32_t start;
  std::uint32_t end;  ///< 0 for an element without one ("<a/>")
};

/// The tags of all elements in document order: the n-th is the n-th element, unless an entity
/// brought some.
[[nodiscard]] std::vector<ElementTags> elementsOf(std::string_view text);

/// The first text directly in the element whose "<" stands at `offset`, without white space around
/// it; empty at the end of the text when there is none. Takes as long as the element, at most.
[[nodiscard]] Span textIn(std::string_view text, std::size_t offset) noexcept;

/// An attribute as it is written in a start tag.
struct TagAttribute {
  Span name;   ///< with its prefix
  Span value;  ///< between the quotes
};

/// A start tag as it is written.
struct Tag {
  Span name;                                    ///< of the element, with its prefix
  std::vector<TagAttribute> attributes = {};    ///< in the order of the document
  std::vector<TagAttribute> declarations = {};  ///< of namespaces
};

/// Reads the start tag whose "<" stands at `offset`.
[[nodiscard]] Tag readTag(std::string_view text, std::size_t offset);

}  // namespace orvane::nimbrel::check
