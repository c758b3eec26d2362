#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>

#include "util/xml/XmlBytes.h"
#include "util/xml/XmlDecoder.h"

namespace orvane::nimbrel::util::internal {

/// The text of a document as UTF-8, whatever its encoding is. Each byte is read once, in order.
class XmlInput {
 public:
  /// Reads the beginning of the document. `encoding` overrides what the document says; null or
  /// empty: detect. Throws `ParseException` when its encoding is not accepted, `std::bad_alloc`,
  /// and what `XmlBytes` throws.
  XmlInput(XmlBytes& bytes, const char* encoding);
  XmlInput(const XmlInput&) = delete;
  XmlInput& operator=(const XmlInput&) = delete;

  /// The whole text, with a zero byte behind it and none in it; null data when it has one or is
  /// long. Lives as long as this.
  [[nodiscard]] std::string_view whole() noexcept;

  /// The next bytes, at most `size`; 0 at the end. Throws `ParseException` for what cannot be
  /// converted, `std::bad_alloc`, and what `XmlBytes` throws.
  std::size_t read(char* target, std::size_t size);

  /// Whether the document ends within a character.
  [[nodiscard]] bool isCut() const noexcept { return decoder_ != nullptr && decoder_->isCut(); }

  /// The size of the document in bytes, as far as it is known.
  [[nodiscard]] std::size_t documentSize() const noexcept { return bytes_.expected(); }

 private:
  static constexpr std::size_t PIECE = XmlDecoder::CAPACITY;
  static constexpr std::size_t MARK_SIZE = 3;

  void decode(const char* encoding);
  void readDeclaration(bool isKnown);
  void markAsUtf8();

  XmlBytes& bytes_;
  std::unique_ptr<XmlDecoder> decoder_;
  // A byte order mark if need be, the first piece as UTF-8, and a zero byte.
  std::array<char, MARK_SIZE + PIECE + 1> first_;
  std::string_view left_;  // what has not been handed out of the first piece
  bool isAll_ = false;     // nothing follows it
};

}  // namespace orvane::nimbrel::util::internal
