#include "check/Decoder.h"

#include <unicode/ucnv.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <iterator>
#include <memory>

#include "util/Ascii.h"

namespace orvane::nimbrel::check {
namespace {

using namespace std::string_view_literals;

// How documents begin that do not have ASCII's bytes for ASCII's characters; the longer ones first.
constexpr struct {
  std::string_view start;
  const char* encoding;
} STARTS[] = {
    {"\0\0\xFE\xFF"sv, "UTF-32BE"}, {"\xFF\xFE\0\0"sv, "UTF-32LE"}, {"\0\0\0<"sv, "UTF-32BE"},
    {"<\0\0\0"sv, "UTF-32LE"},      {"\xFE\xFF"sv, "UTF-16BE"},     {"\xFF\xFE"sv, "UTF-16LE"},
    {"\0<"sv, "UTF-16BE"},          {"<\0"sv, "UTF-16LE"},          {"\x4C\x6F\xA7\x94"sv, "cp037"},
};

// Declared in a document whose first bytes are ASCII, these can only be meant for UTF-8.
constexpr std::string_view PART_OF_UTF8[] = {"utf-8", "utf8", "us-ascii", "ascii",
                                             "utf-1", "ucs-", "iso-10646"};

bool startsWith(std::string_view text, std::string_view start) noexcept {
  return text.substr(0, start.size()) == start;
}

/// The encoding that an XML declaration names, in lower case; empty for none.
std::string declaredEncoding(std::string_view document) {
  if (!startsWith(document, "<?xml")) {
    return {};
  }
  const std::string_view declaration = document.substr(0, document.find("?>"));
  const std::size_t name = declaration.find("encoding");
  const std::size_t begin = name == std::string_view::npos ? std::string_view::npos
                                                           : declaration.find_first_of("'\"", name);
  if (begin == std::string_view::npos) {
    return {};
  }
  std::string encoding(
      declaration.substr(begin + 1, declaration.find(declaration[begin], begin + 1) - begin - 1));
  std::transform(encoding.begin(), encoding.end(), encoding.begin(), util::ascii::lowerCase);
  return encoding;
}

struct ConverterCloser {
  void operator()(UConverter* converter) const noexcept { ucnv_close(converter); }
};

void append(std::string& text, UChar32 codePoint) {
  char units[U8_MAX_LENGTH];
  std::size_t size = 0;
  U8_APPEND_UNSAFE(units, size, codePoint);
  text.append(units, size);
}

}  // namespace

std::string encodingOf(std::string_view document) {
  for (const auto& row : STARTS) {
    if (startsWith(document, row.start)) {
      return row.encoding;
    }
  }
  std::string encoding = declaredEncoding(document);
  const bool isUtf8 =
      std::any_of(std::begin(PART_OF_UTF8), std::end(PART_OF_UTF8),
                  [&](std::string_view name) { return startsWith(encoding, name); });
  return isUtf8 ? std::string() : encoding;
}

bool isKnownEncoding(const std::string& name) noexcept {
  UErrorCode error = U_ZERO_ERROR;
  return ucnv_countAliases(name.c_str(), &error) > 0 && U_SUCCESS(error);
}

bool decode(std::string_view document, const std::string& encoding, std::string& text,
            std::vector<std::uint32_t>& bytes) {
  // ICU would look for a file of any other name.
  if (!isKnownEncoding(encoding)) {
    return false;
  }
  UErrorCode error = U_ZERO_ERROR;
  const std::unique_ptr<UConverter, ConverterCloser> converter(ucnv_open(encoding.c_str(), &error));
  if (U_FAILURE(error)) {
    return false;
  }
  const char* const begin = document.data();
  const char* const end = begin + document.size();
  const char* source = begin;
  UChar32 lead = 0;
  std::uint32_t leadByte = 0;
  const auto add = [&](UChar32 codePoint, std::uint32_t byte) {
    if (codePoint != 0xFEFF || !text.empty()) {
      append(text, codePoint);
      bytes.push_back(byte);
    }
  };
  do {
    UChar units[1024];
    std::int32_t offsets[std::size(units)];
    UChar* target = units;
    const auto chunk = static_cast<std::uint32_t>(source - begin);
    error = U_ZERO_ERROR;
    ucnv_toUnicode(converter.get(), &target, units + std::size(units), &source, end, offsets, 1,
                   &error);
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

}  // namespace orvane::nimbrel::check
