#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>

#include "util/xml/XmlBytes.h"
#include "util/xml/XmlDecoder.h"
#include "util/xml/XmlOpenTagCounter.h"
#include "util/xml/XmlReading.h"

namespace orvane::nimbrel::util::internal {

/// Feeds a document to libxml2 as UTF-8, whatever its encoding is, and piece by piece, so that
/// limits count before libxml2 has used much memory.
class XmlInput {
 public:
  /// Reads the beginning of the document. `encoding` overrides what the document says; null
  /// or empty: detect. Throws `ParseException` when its encoding is not accepted, `std::bad_alloc`,
  /// and what `XmlBytes` throws.
  XmlInput(XmlBytes& bytes, const char* encoding);
  XmlInput(const XmlInput&) = delete;
  XmlInput& operator=(const XmlInput&) = delete;

  /// Makes itself the input of a parse, which must not outlive it.
  void connect(XmlReading& reading);

 private:
  static constexpr std::size_t PIECE = XmlDecoder::CAPACITY;
  static constexpr std::size_t MARK_SIZE = 3;

  static int read(void* self, char* target, int size) noexcept;
  std::size_t next(char* target, std::size_t size);
  std::size_t pull(char* target, std::size_t size);
  void decode(const char* encoding, std::string_view first);
  void readDeclaration(bool isKnown);
  void markAsUtf8();

  XmlBytes& bytes_;
  std::unique_ptr<XmlDecoder> decoder_;
  // A byte order mark if need be, the first piece as UTF-8, and a zero byte.
  std::array<char, MARK_SIZE + PIECE + 1> first_;
  std::string_view left_;  // what has not been handed out of the first piece
  bool isAll_ = false;     // nothing follows it
  XmlReading* reading_ = nullptr;
  XmlOpenTagCounter tag_;
  std::size_t choices_ = 0;  // "|" before the root
};

}  // namespace orvane::nimbrel::util::internal
