// What an archive has of an entry outside of its directory: the entry's own header, its content and
// what stands behind it.

#define ZLIB_CONST  // its input is only read
#include <zlib.h>

#include <algorithm>
#include <new>
#include <string>

#include "tools/input/ZipArchive.h"

namespace orvane::nimbrel::tools {
namespace {

using zip::begins;
using zip::numberAt;

constexpr std::size_t HEADER_SIZE = 30;  // without name and extra fields
constexpr std::string_view HEADER_MARK = "PK\x03\x04";
constexpr char DESCRIPTOR_MARK[] = "PK\x07\x08";

constexpr std::uint16_t STORED = 0;
constexpr std::uint16_t DEFLATED = 8;

// Documents of elements without any text stay below.
constexpr std::uint64_t HARMLESS_SIZE = std::uint64_t{1024} * 1024;
constexpr std::uint64_t MAXIMUM_RATIO = 100;

ZipProblem problemOf(const ZipEntry& entry, const std::string& problem) {
  return ZipProblem("has an entry, '" + std::string(entry.name) + "', " + problem);
}

/// A number of so many bytes.
std::string bytesOf(std::uint64_t value, std::size_t width) {
  std::string bytes;
  for (; bytes.size() < width; value >>= 8) {
    bytes += static_cast<char>(value & 0xFFU);
  }
  return bytes;
}

/// Whether a number of an own header is that of the directory; or none, since it follows the
/// content.
bool agrees(std::uint64_t own, std::uint64_t listed, bool hasDescriptor) noexcept {
  return own == listed || (own == 0 && hasDescriptor);
}

}  // namespace

std::uint32_t zip::checksumOf(std::string_view bytes) noexcept {
  return static_cast<std::uint32_t>(
      ::crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

void ZipArchive::readHeaders() {
  std::vector<ZipEntry*> ordered;
  ordered.reserve(entries_.size());
  for (ZipEntry& entry : entries_) {
    ordered.push_back(&entry);
  }
  std::sort(ordered.begin(), ordered.end(), [](const ZipEntry* left, const ZipEntry* right) {
    return left->header < right->header;
  });
  std::uint64_t end = 0;
  for (ZipEntry* const entry : ordered) {
    if (entry->header < end) {
      throw problemOf(*entry, "that begins within another one");
    }
    addUnlisted(end, entry->header);
    readHeader(*entry);
    end = entry->content + entry->packedSize + descriptorSize(*entry);
  }
  addUnlisted(end, directoryAt_);
}

void ZipArchive::addUnlisted(std::uint64_t from, std::uint64_t to) {
  if (from >= to) {
    return;
  }
  if (begins(read_(from, HEADER_MARK.size()), HEADER_MARK)) {
    throw ZipProblem("has an entry that is not in its central directory");
  }
  unlistedBytes_ += to - from;
}

void ZipArchive::readHeader(ZipEntry& entry) const {
  const std::size_t size = HEADER_SIZE + entry.name.size();
  const std::string header = entry.header < directoryAt_ ? read_(entry.header, size) : "";
  if (header.size() < size || !begins(header, HEADER_MARK) ||
      numberAt<std::uint16_t>(header, 26) != entry.name.size() ||
      std::string_view(header).substr(HEADER_SIZE) != entry.name) {
    throw problemOf(entry, "with no header of its own where the central directory says");
  }
  const auto extraSize = numberAt<std::uint16_t>(header, 28);
  const std::string extra = extraSize == 0 ? "" : read_(entry.header + size, extraSize);
  ZipEntry own;
  own.name = entry.name;
  zip::readCommon(std::string_view(header).substr(6), extra, own);
  const std::string_view listedName = entry.unicodeName.empty() ? entry.name : entry.unicodeName;
  if (own.isEncrypted != entry.isEncrypted || own.method != entry.method ||
      (!own.unicodeName.empty() && own.unicodeName != listedName) ||
      !agrees(own.checksum, entry.checksum, own.hasDescriptor) ||
      !agrees(own.size, entry.size, own.hasDescriptor) ||
      !agrees(own.packedSize, entry.packedSize, own.hasDescriptor)) {
    throw problemOf(entry, "with a header of its own that says something else");
  }
  entry.content = entry.header + size + extraSize;
  entry.hasDescriptor = own.hasDescriptor;
  if (entry.content > directoryAt_ || entry.packedSize > directoryAt_ - entry.content) {
    throw problemOf(entry, "that reaches beyond the archive");
  }
}

/// The size of what follows the content of an entry and says the same as the directory: a checksum
/// and two sizes of 32 or 64 bits, with a mark or without.
std::uint64_t ZipArchive::descriptorSize(const ZipEntry& entry) const {
  if (!entry.hasDescriptor) {
    return 0;
  }
  const std::string found = read_(entry.content + entry.packedSize, 24);
  // The longer form first: without content the other one is how that begins.
  for (const std::size_t width : {std::size_t{8}, std::size_t{4}}) {
    const std::string plain =
        bytesOf(entry.checksum, 4) + bytesOf(entry.packedSize, width) + bytesOf(entry.size, width);
    for (const std::string& expected : {DESCRIPTOR_MARK + plain, plain}) {
      if (begins(found, expected)) {
        return expected.size();
      }
    }
  }
  return 0;
}

std::string ZipArchive::unpack(const ZipEntry& entry, std::size_t limit) const {
  if (entry.isEncrypted) {
    throw ZipProblem("is encrypted");
  }
  if (entry.method != STORED && entry.method != DEFLATED) {
    throw ZipProblem("is compressed by method " + std::to_string(entry.method) +
                     ", and only 0 (stored) and 8 (deflated) are known");
  }
  if (entry.size > HARMLESS_SIZE && entry.size / MAXIMUM_RATIO > entry.packedSize) {
    throw ZipProblem("is larger than 1 MiB and than a hundred times its packed size");
  }
  const auto most = static_cast<std::size_t>(std::min<std::uint64_t>(entry.size, limit));
  std::string content = entry.method == DEFLATED
                            ? inflate(entry, most)
                            : read_(entry.content, static_cast<std::size_t>(std::min<std::uint64_t>(
                                                       entry.packedSize, most + std::uint64_t{1})));
  if (content.size() != entry.size) {
    throw ZipProblem("has another size than the archive says");
  }
  if (zip::checksumOf(content) != entry.checksum) {
    throw ZipProblem("is damaged (CRC error)");
  }
  return content;
}

std::string ZipArchive::inflate(const ZipEntry& entry, std::size_t limit) const {
  // Deflated, no content is much longer than itself.
  const auto most = std::min<std::uint64_t>(entry.packedSize, limit + limit / 8 + 1024);
  const std::string packed = read_(entry.content, static_cast<std::size_t>(most));
  std::string content(limit + 1, '\0');
  z_stream stream = {};
  stream.next_in = reinterpret_cast<const Bytef*>(packed.data());
  stream.avail_in = static_cast<uInt>(packed.size());
  stream.next_out = reinterpret_cast<Bytef*>(content.data());
  stream.avail_out = static_cast<uInt>(content.size());
  if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) {  // without a header
    throw std::bad_alloc();
  }
  const int result = ::inflate(&stream, Z_FINISH);
  ::inflateEnd(&stream);
  if (result == Z_MEM_ERROR) {
    throw std::bad_alloc();
  }
  if (result != Z_STREAM_END && stream.avail_out != 0) {
    throw ZipProblem(result == Z_BUF_ERROR ? "is cut short" : "is damaged");
  }
  content.resize(content.size() - stream.avail_out);
  return content;
}

}  // namespace orvane::nimbrel::tools
