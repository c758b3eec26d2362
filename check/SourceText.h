#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::nimbrel::check {

/// A part of a text: offsets of bytes.
struct Span {
  std::size_t begin = 0;
  std::size_t end = 0;

  [[nodiscard]] bool isEmpty() const noexcept { return begin == end; }
};

/// A place of a document in all units in which editors and programs count.
struct Position {
  std::uint32_t line = 0;         ///< counted from 1; a line ends at a line feed
  std::uint32_t column = 0;       ///< in code points, counted from 1
  std::uint32_t utf16Column = 0;  ///< in UTF-16 code units, counted from 1
  std::size_t byte = 0;           ///< in the document as it was given, counted from 0
};

/// The text of a document in UTF-8, whatever its encoding, without a byte order mark.
///
/// Looks at the bytes once; each position that is asked for then takes about the same time, however
/// long the lines are. The bytes of a UTF-8 document are not copied: they are the caller's and have
/// to live as long. Immutable: for any number of threads. The constructor throws only
/// `std::bad_alloc`, all else nothing.
class SourceText {
 public:
  explicit SourceText(std::string_view document);

  /// The text; of an unknown encoding the declaration up to its name, or a view with null data.
  [[nodiscard]] std::string_view text() const noexcept { return text_; }
  /// Where in the document a byte of the text is; `offset` may be the end of the text.
  [[nodiscard]] Position positionOf(std::size_t offset) const noexcept;
  /// The offset of a line and column in code points, both counted from 1; the end of the line for a
  /// column behind it, the end of the text for a line behind it.
  [[nodiscard]] std::size_t offsetOf(std::uint32_t line, std::uint32_t column) const noexcept;
  /// A line, counted from 1, without its end. Null data for a line that there is not.
  [[nodiscard]] std::string_view line(std::uint32_t number) const noexcept;

 private:
  /// Code points and UTF-16 code units in front of a place.
  struct Counts {
    std::uint32_t codePoints = 0;
    std::uint32_t utf16Units = 0;
  };

  [[nodiscard]] Counts countsBefore(std::size_t offset) const noexcept;
  void index();

  std::string decoded_;  // of a document that is not UTF-8
  std::string_view text_;
  std::size_t markSize_ = 0;          // bytes of the byte order mark of a UTF-8 document
  std::vector<std::uint32_t> bytes_;  // of each code point of `decoded_` in the document
  std::vector<std::uint32_t> lines_;  // offsets at which lines begin
  std::vector<Counts> marks_;         // one for each few hundred bytes
};

}  // namespace orvane::nimbrel::check
