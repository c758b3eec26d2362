#include "tools/input/ZipArchive.h"

#define ZLIB_CONST  // its input is only read
#include <zlib.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <utility>

namespace orvane::nimbrel::tools {
namespace {

constexpr std::uint64_t MAXIMUM_ENTRIES = 100000;
constexpr std::uint64_t MAXIMUM_DIRECTORY = std::uint64_t{16} * 1024 * 1024;
constexpr std::size_t PIECE = 65536;

constexpr std::string_view ENTRY_MARK = "PK\x03\x04";
constexpr std::string_view DIRECTORY_MARK = "PK\x01\x02";
constexpr std::string_view SIGNATURE_MARK = "PK\x05\x05";
constexpr std::string_view END_MARK = "PK\x05\x06";
constexpr std::string_view ZIP64_END_MARK = "PK\x06\x06";
constexpr std::string_view ZIP64_LOCATOR_MARK = "PK\x06\x07";

// The sizes of these without names and other parts that vary.
constexpr std::size_t ENTRY_SIZE = 30;
constexpr std::size_t DIRECTORY_SIZE = 46;
constexpr std::size_t END_SIZE = 22;
constexpr std::size_t ZIP64_END_SIZE = 56;
constexpr std::size_t ZIP64_LOCATOR_SIZE = 20;

constexpr std::uint16_t ENCRYPTED = 1;
constexpr std::uint16_t HAS_DESCRIPTOR = 8;
constexpr std::uint16_t IS_UTF8 = 0x800;
constexpr std::uint16_t STORED = 0;
constexpr std::uint16_t DEFLATED = 8;
constexpr std::uint16_t ZIP64_FIELD = 1;
constexpr std::uint16_t UNICODE_NAME_FIELD = 0x7075;

/// A little-endian number within a text that is long enough.
template <typename Number>
Number numberAt(std::string_view bytes, std::size_t at) noexcept {
  Number number = 0;
  for (std::size_t i = sizeof(Number); i != 0; --i) {
    number = static_cast<Number>(static_cast<std::uint64_t>(number) << 8 |
                                 static_cast<unsigned char>(bytes[at + i - 1]));
  }
  return number;
}

bool begins(std::string_view bytes, std::string_view mark) noexcept {
  return bytes.substr(0, mark.size()) == mark;
}

/// Gives `value` the next number of a ZIP64 field, if the short form says that it stands there.
void widen(std::uint64_t& value, std::string_view& field) {
  if (value != std::numeric_limits<std::uint32_t>::max()) {
    return;
  }
  if (field.size() < 8) {
    throw ZipProblem("has a damaged central directory");
  }
  value = numberAt<std::uint64_t>(field, 0);
  field.remove_prefix(8);
}

std::uint32_t checksumOf(std::string_view bytes) noexcept {
  return static_cast<std::uint32_t>(
      ::crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

void readFlags(std::uint16_t flags, ZipEntry& entry) noexcept {
  entry.isUtf8 = (flags & IS_UTF8) != 0;
  entry.isEncrypted = (flags & ENCRYPTED) != 0;
  entry.hasDescriptor = (flags & HAS_DESCRIPTOR) != 0;
}

/// Reads the sizes and the offset that did not fit into 32 bits, and the name in UTF-8.
void readExtra(std::string_view extra, ZipEntry& entry) {
  while (extra.size() >= 4) {
    const std::size_t length = numberAt<std::uint16_t>(extra, 2);
    const auto kind = numberAt<std::uint16_t>(extra, 0);
    std::string_view field = extra.substr(4, length);
    if (kind == ZIP64_FIELD) {
      widen(entry.size, field);
      widen(entry.packedSize, field);
      widen(entry.header, field);
    } else if (kind == UNICODE_NAME_FIELD && field.size() > 5 && field.front() == 1 &&
               numberAt<std::uint32_t>(field, 1) == checksumOf(entry.name)) {
      entry.unicodeName = field.substr(5);
    }
    extra.remove_prefix(std::min(extra.size(), 4 + length));
  }
}

/// Whether a number of the short form is what the long one says, or leaves it to that.
template <typename Number>
bool agrees(std::uint64_t value, std::string_view record, std::size_t at) noexcept {
  const auto shortValue = numberAt<Number>(record, at);
  return shortValue == value || shortValue == std::numeric_limits<Number>::max();
}

}  // namespace

/// What the record at the end says.
struct ZipArchive::End {
  std::uint64_t at = 0;
  bool isSplit = false;
  std::uint64_t entries = 0;
  std::uint64_t directorySize = 0;
  std::uint64_t directoryAt = 0;
};

ZipArchive::ZipArchive(Read read, std::uint64_t size) : read_(std::move(read)), size_(size) {
  const End end = findEnd();
  if (end.isSplit) {
    throw ZipProblem("is split over several files");
  }
  if (end.entries > MAXIMUM_ENTRIES) {
    throw ZipProblem("has more than 100000 entries");
  }
  if (end.directorySize > MAXIMUM_DIRECTORY) {
    throw ZipProblem("has a central directory of more than 16 MiB");
  }
  if (end.directoryAt > end.at || end.directorySize > end.at - end.directoryAt) {
    throw ZipProblem("has its central directory outside of itself");
  }
  if (end.directorySize != end.at - end.directoryAt) {
    throw ZipProblem("has something between its central directory and its end");
  }
  directoryAt_ = end.directoryAt;
  directory_ = read_(end.directoryAt, static_cast<std::size_t>(end.directorySize));
  if (directory_.size() != end.directorySize) {
    throw ZipProblem("is cut short");
  }
  readDirectory(end.entries);
}

ZipArchive::End ZipArchive::findEnd() const {
  constexpr std::uint64_t LONGEST = END_SIZE + std::numeric_limits<std::uint16_t>::max();
  const std::uint64_t tailAt = size_ - std::min(size_, LONGEST);
  const std::string tail = read_(tailAt, static_cast<std::size_t>(size_ - tailAt));
  std::optional<std::size_t> found;
  for (std::size_t at = 0; at + END_SIZE <= tail.size(); ++at) {
    at = tail.find(END_MARK, at);
    if (at == std::string::npos || at + END_SIZE > tail.size()) {
      break;
    }
    // The comment, which may hold anything, reaches to the end.
    if (at + END_SIZE + numberAt<std::uint16_t>(tail, at + 20) == tail.size()) {
      if (found) {
        throw ZipProblem("has two ends, of which either may count");
      }
      found = at;
    }
  }
  if (!found) {
    throw ZipProblem("is cut short, or has something behind its end");
  }
  const std::string_view record = std::string_view(tail).substr(*found);
  End end;
  end.at = tailAt + *found;
  end.entries = numberAt<std::uint16_t>(record, 10);
  end.isSplit = numberAt<std::uint16_t>(record, 4) != numberAt<std::uint16_t>(record, 6) ||
                numberAt<std::uint16_t>(record, 8) != end.entries;
  end.directorySize = numberAt<std::uint32_t>(record, 12);
  end.directoryAt = numberAt<std::uint32_t>(record, 16);
  readZip64(end.at, end);
  if (!agrees<std::uint16_t>(end.entries, record, 10) ||
      !agrees<std::uint32_t>(end.directorySize, record, 12) ||
      !agrees<std::uint32_t>(end.directoryAt, record, 16)) {
    throw ZipProblem("has two ends, of which either may count");
  }
  return end;
}

/// Replaces what the record says by what the one for larger archives says, when there is one.
void ZipArchive::readZip64(std::uint64_t endAt, End& end) const {
  if (endAt < ZIP64_LOCATOR_SIZE) {
    return;
  }
  const std::string locator = read_(endAt - ZIP64_LOCATOR_SIZE, ZIP64_LOCATOR_SIZE);
  if (locator.size() != ZIP64_LOCATOR_SIZE || !begins(locator, ZIP64_LOCATOR_MARK)) {
    return;
  }
  const auto at = numberAt<std::uint64_t>(locator, 8);
  if (at > endAt || endAt - at < ZIP64_LOCATOR_SIZE + ZIP64_END_SIZE) {
    throw ZipProblem("has a damaged end");
  }
  const std::string record = read_(at, ZIP64_END_SIZE);
  if (record.size() != ZIP64_END_SIZE || !begins(record, ZIP64_END_MARK) ||
      numberAt<std::uint64_t>(record, 4) != endAt - at - ZIP64_LOCATOR_SIZE - 12) {
    throw ZipProblem("has a damaged end");
  }
  end.at = at;
  end.entries = numberAt<std::uint64_t>(record, 32);
  end.isSplit = numberAt<std::uint32_t>(record, 16) != numberAt<std::uint32_t>(record, 20) ||
                numberAt<std::uint64_t>(record, 24) != end.entries;
  end.directorySize = numberAt<std::uint64_t>(record, 40);
  end.directoryAt = numberAt<std::uint64_t>(record, 48);
}

void ZipArchive::readDirectory(std::uint64_t count) {
  std::string_view rest = directory_;
  for (std::uint64_t i = 0; i < count; ++i) {
    if (rest.size() < DIRECTORY_SIZE || !begins(rest, DIRECTORY_MARK)) {
      throw ZipProblem("has a damaged central directory");
    }
    const std::size_t name = numberAt<std::uint16_t>(rest, 28);
    const std::size_t extra = numberAt<std::uint16_t>(rest, 30);
    const std::size_t length = DIRECTORY_SIZE + name + extra + numberAt<std::uint16_t>(rest, 32);
    if (length > rest.size()) {
      throw ZipProblem("has a damaged central directory");
    }
    ZipEntry& entry = entries_.emplace_back();
    entry.name = rest.substr(DIRECTORY_SIZE, name);
    readFlags(numberAt<std::uint16_t>(rest, 8), entry);
    entry.method = numberAt<std::uint16_t>(rest, 10);
    entry.checksum = numberAt<std::uint32_t>(rest, 16);
    entry.packedSize = numberAt<std::uint32_t>(rest, 20);
    entry.size = numberAt<std::uint32_t>(rest, 24);
    entry.header = numberAt<std::uint32_t>(rest, 42);
    readExtra(rest.substr(DIRECTORY_SIZE + name, extra), entry);
    rest.remove_prefix(length);
  }
  if (!rest.empty() && !begins(rest, SIGNATURE_MARK)) {
    throw ZipProblem("has a damaged central directory");
  }
}

std::string ZipArchive::unpack(const ZipEntry& entry, std::size_t limit) const {
  if (entry.isEncrypted) {
    throw ZipProblem("is encrypted");
  }
  if (entry.method != STORED && entry.method != DEFLATED) {
    throw ZipProblem("is compressed by method " + std::to_string(entry.method) +
                     ", and only 0 (stored) and 8 (deflated) are known");
  }
  const std::uint64_t at = findContent(entry);
  std::string content = entry.method == DEFLATED
                            ? inflate(entry, at, limit)
                            : read_(at, static_cast<std::size_t>(std::min<std::uint64_t>(
                                            entry.packedSize, limit + std::uint64_t{1})));
  if (content.size() != entry.size) {
    throw ZipProblem("has another size than the archive says");
  }
  if (checksumOf(content) != entry.checksum) {
    throw ZipProblem("is damaged (CRC error)");
  }
  return content;
}

/// Throws when the own header of an entry says something else than the central directory.
void ZipArchive::requireAgreement(const ZipEntry& entry, std::string_view header,
                                  std::size_t extraSize) const {
  ZipEntry own;
  own.name = entry.name;
  readFlags(numberAt<std::uint16_t>(header, 6), own);
  own.checksum = numberAt<std::uint32_t>(header, 14);
  own.packedSize = numberAt<std::uint32_t>(header, 18);
  own.size = numberAt<std::uint32_t>(header, 22);
  readExtra(read_(entry.header + header.size(), extraSize), own);
  if (own.isEncrypted ||
      (!own.hasDescriptor && (own.checksum != entry.checksum || own.size != entry.size ||
                              own.packedSize != entry.packedSize))) {
    throw ZipProblem("has a header of its own that says something else than the archive");
  }
}

/// Where the content of an entry begins, behind a header that belongs to it.
std::uint64_t ZipArchive::findContent(const ZipEntry& entry) const {
  const std::string header =
      entry.header < directoryAt_ ? read_(entry.header, ENTRY_SIZE + entry.name.size()) : "";
  if (header.size() < ENTRY_SIZE + entry.name.size() || !begins(header, ENTRY_MARK) ||
      numberAt<std::uint16_t>(header, 26) != entry.name.size() ||
      std::string_view(header).substr(ENTRY_SIZE) != entry.name ||
      numberAt<std::uint16_t>(header, 8) != entry.method) {
    throw ZipProblem("has no header of its own where the archive says");
  }
  const auto extra = numberAt<std::uint16_t>(header, 28);
  requireAgreement(entry, header, extra);
  const std::uint64_t at = entry.header + header.size() + extra;
  if (at > directoryAt_ || entry.packedSize > directoryAt_ - at) {
    throw ZipProblem("reaches beyond the archive");
  }
  return at;
}

std::string ZipArchive::inflate(const ZipEntry& entry, std::uint64_t at, std::size_t limit) const {
  z_stream stream = {};
  if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) {  // without a header
    throw std::bad_alloc();
  }
  const std::unique_ptr<z_stream, decltype(&inflateEnd)> closing(&stream, inflateEnd);
  std::string content;
  std::string packed;
  int result = Z_OK;
  for (std::uint64_t left = entry.packedSize; result != Z_STREAM_END && content.size() <= limit;) {
    if (stream.avail_in == 0 && left != 0) {
      packed = read_(at, static_cast<std::size_t>(std::min<std::uint64_t>(left, PIECE)));
      at += packed.size();
      left -= packed.size();
      stream.next_in = reinterpret_cast<const Bytef*>(packed.data());
      stream.avail_in = static_cast<uInt>(packed.size());
    }
    // Enough for most documents at once, and not much to be zeroed in vain.
    const std::size_t used = content.size();
    content.resize(used + std::clamp<std::size_t>(packed.size() * 4, PIECE / 16, PIECE));
    stream.next_out = reinterpret_cast<Bytef*>(content.data()) + used;
    stream.avail_out = static_cast<uInt>(content.size() - used);
    result = ::inflate(&stream, Z_NO_FLUSH);
    content.resize(content.size() - stream.avail_out);
    if (result == Z_MEM_ERROR) {
      throw std::bad_alloc();
    }
    if (result == Z_BUF_ERROR && left == 0) {
      throw ZipProblem("is cut short");
    }
    if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR) {
      throw ZipProblem("is damaged");
    }
  }
  return content;
}

}  // namespace orvane::nimbrel::tools
