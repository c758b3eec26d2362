#include "check/Decoder.h"

#include <unicode/localpointer.h>
#include <unicode/ucnv.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <iterator>
#include <new>

#include "util/ParseException.h"
#include "util/xml/XmlEncoding.h"

namespace orvane::nimbrel::check {
namespace {

/// What ICU says of a call; throws when it had no memory.
bool didSucceed(UErrorCode error) {
  if (error == U_MEMORY_ALLOCATION_ERROR) {
    throw std::bad_alloc();
  }
  return U_SUCCESS(error);
}

}  // namespace

void appendUtf8(std::string& text, std::int32_t codePoint) {
  char units[U8_MAX_LENGTH];
  std::size_t size = 0;
  U8_APPEND_UNSAFE(units, size, codePoint);
  text.append(units, size);
}

std::optional<std::string> encodingOf(std::string_view document) {
  const char* encoding = nullptr;
  try {
    encoding = util::internal::encodingShownBy(document);
  } catch (const ParseException&) {
    return std::nullopt;  // EBCDIC
  }
  if (encoding == nullptr) {
    const std::string_view declared = util::internal::declarationOf(document).encoding;
    encoding = util::internal::findEncoding(declared.empty() ? "UTF-8" : declared);
    if (encoding == nullptr || util::internal::isWide(encoding)) {
      return std::nullopt;  // wide units that do not look like it are rejected
    }
  }
  return util::internal::isUtf8(encoding) ? std::string() : std::string(encoding);
}

bool isKnownEncoding(const std::string& name) {
  UErrorCode error = U_ZERO_ERROR;
  const bool isKnown = ucnv_countAliases(name.c_str(), &error) > 0;
  return didSucceed(error) && isKnown;
}

bool decode(std::string_view document, const std::string& encoding, std::string& text,
            std::vector<std::uint32_t>& bytes) {
  UErrorCode error = U_ZERO_ERROR;
  const icu::LocalUConverterPointer converter(ucnv_open(encoding.c_str(), &error));
  if (!didSucceed(error)) {
    return false;
  }
  const char* const begin = document.data();
  const char* const end = begin + document.size();
  const char* source = begin;
  UChar32 lead = 0;
  std::uint32_t leadByte = 0;
  const auto add = [&](UChar32 codePoint, std::uint32_t byte) {
    if (codePoint != 0xFEFF || !text.empty()) {
      appendUtf8(text, codePoint);
      bytes.push_back(byte);
    }
  };
  do {
    UChar units[1024];
    std::int32_t offsets[std::size(units)];
    UChar* target = units;
    const auto chunk = static_cast<std::uint32_t>(source - begin);
    error = U_ZERO_ERROR;
    ucnv_toUnicode(converter.getAlias(), &target, units + std::size(units), &source, end, offsets,
                   1, &error);
    for (const UChar* unit = units; unit != target; ++unit) {
      // A character may begin in the chunk before; then its offset is not known, and -1.
      const std::int32_t offset = offsets[unit - units];
      const std::uint32_t byte = offset < 0 ? chunk : chunk + static_cast<std::uint32_t>(offset);
      if (U16_IS_LEAD(*unit)) {
        lead = *unit;
        leadByte = byte;
      } else if (U16_IS_TRAIL(*unit)) {
        add(U16_GET_SUPPLEMENTARY(lead, *unit), leadByte);
      } else {
        add(*unit, byte);
      }
    }
  } while (error == U_BUFFER_OVERFLOW_ERROR);
  bytes.push_back(static_cast<std::uint32_t>(document.size()));
  return true;
}

std::optional<std::string> encode(std::string_view text, const std::string& encoding) {
  if (encoding.empty()) {
    return std::string(text);
  }
  UErrorCode error = U_ZERO_ERROR;
  const icu::LocalUConverterPointer converter(ucnv_open(encoding.c_str(), &error));
  ucnv_setFromUCallBack(converter.getAlias(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                        &error);
  if (!didSucceed(error)) {
    return std::nullopt;
  }
  const auto size = static_cast<std::int32_t>(text.size());
  std::string bytes(static_cast<std::size_t>(UCNV_GET_MAX_BYTES_FOR_STRING(
                        size, ucnv_getMaxCharSize(converter.getAlias()))),
                    '\0');
  const std::int32_t written =
      ucnv_fromAlgorithmic(converter.getAlias(), UCNV_UTF8, bytes.data(),
                           static_cast<std::int32_t>(bytes.size()), text.data(), size, &error);
  if (!didSucceed(error)) {
    return std::nullopt;
  }
  bytes.resize(static_cast<std::size_t>(written));
  return bytes;
}

}  // namespace orvane::nimbrel::check
