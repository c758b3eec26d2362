#pragma once

#include <unicode/ucnv.h>

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "util/xml/LibXml.h"
#include "util/xml/XmlBytes.h"

namespace orvane::nimbrel::util::internal {

/// Makes UTF-8 of a document in another encoding, piece by piece.
class XmlDecoder {
 public:
  /// `encoding` is a name that `XmlEncoding` gives; `first` what has been read of the bytes, at
  /// most `CAPACITY` of them. Throws `std::bad_alloc`, and `ParseException` when ICU lacks the
  /// encoding.
  XmlDecoder(const char* encoding, std::string_view first, XmlBytes& bytes);

  /// The next bytes of UTF-8, at most `size`; 0 at the end of the document and at a fault. Throws
  /// `std::bad_alloc`, and what `XmlBytes` throws.
  std::size_t read(char* target, std::size_t size);

  /// Why the document goes on but cannot be converted; empty: it can, as far as it goes.
  [[nodiscard]] const std::string& fault() const noexcept { return fault_; }
  /// Whether the document ends within a character.
  [[nodiscard]] bool isCut() const noexcept { return isCut_; }
  /// Where that is: behind all that has been read.
  [[nodiscard]] libxml::Position position() const noexcept { return position_; }

  static constexpr std::size_t CAPACITY = 4096;

 private:
  struct Closer {
    void operator()(UConverter* converter) const noexcept { ucnv_close(converter); }
  };
  using Converter = std::unique_ptr<UConverter, Closer>;

  static Converter open(const char* encoding);
  void refill();
  void advance(std::string_view text) noexcept;
  void noteFault(const char* behind);

  Converter from_;
  Converter utf8_;
  XmlBytes& bytes_;
  std::array<char, CAPACITY> raw_;
  const char* next_;
  const char* end_;
  bool isLast_ = false;  // nothing follows what is in `raw_`
  std::array<UChar, 512> pivot_;
  UChar* pivotSource_ = pivot_.data();
  UChar* pivotTarget_ = pivot_.data();
  std::string fault_;
  bool isCut_ = false;
  libxml::Position position_ = {1, 1};
};

}  // namespace orvane::nimbrel::util::internal
