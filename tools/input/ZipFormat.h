#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "tools/input/ZipArchive.h"

/// The parts of a ZIP archive, for those who read one.
namespace orvane::nimbrel::tools::zip {

/// A little-endian number within a text that is long enough.
template <typename Number>
[[nodiscard]] Number numberAt(std::string_view bytes, std::size_t at) noexcept {
  Number number = 0;
  for (std::size_t i = sizeof(Number); i != 0; --i) {
    number = static_cast<Number>(static_cast<std::uint64_t>(number) << 8 |
                                 static_cast<unsigned char>(bytes[at + i - 1]));
  }
  return number;
}

[[nodiscard]] inline bool begins(std::string_view bytes, std::string_view mark) noexcept {
  return bytes.substr(0, mark.size()) == mark;
}

/// Reads what an entry of the directory and its own header have in the same order, from the flags
/// to the size; and the extra fields: the sizes and the offset that did not fit into 32 bits, and
/// the name in UTF-8. Throws `ZipProblem`.
void readCommon(std::string_view record, std::string_view extra, ZipEntry& entry);

[[nodiscard]] std::uint32_t checksumOf(std::string_view bytes) noexcept;

}  // namespace orvane::nimbrel::tools::zip
