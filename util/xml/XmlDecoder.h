#pragma once

#include <unicode/ucnv.h>

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "util/xml/XmlBytes.h"
#include "util/xml/XmlPosition.h"

namespace orvane::nimbrel::util::internal {

/// Makes UTF-8 of a document in another encoding, piece by piece.
class XmlDecoder {
 public:
  /// `encoding` is a name that `XmlEncoding` gives; `first` what has been read of the bytes, at
  /// most `CAPACITY` of them. Throws `std::bad_alloc`, and `ParseException` when ICU lacks the
  /// encoding.
  XmlDecoder(const char* encoding, std::string_view first, XmlBytes& bytes);

  /// The next bytes of UTF-8, at most `size`; 0 at the end of the document. Throws `ParseException`
  /// when all has been read that comes before bytes that cannot be converted, `std::bad_alloc`, and
  /// what `XmlBytes` throws.
  std::size_t read(char* target, std::size_t size);

  /// Whether all bytes so far could be converted.
  [[nodiscard]] bool isSound() const noexcept { return fault_.empty() && !isCut_; }
  /// Whether the document ends within a character.
  [[nodiscard]] bool isCut() const noexcept { return isCut_; }

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
  std::string fault_;  // why what follows cannot be converted
  bool isCut_ = false;
  XmlPosition position_ = {1, 1};  // behind all that has been read
};

}  // namespace orvane::nimbrel::util::internal
