#include "tools/input/ZipArchive.h"

#include <sys/stat.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

namespace orvane::nimbrel::tools {
namespace {

using zip::begins;
using zip::numberAt;

constexpr std::uint64_t MAXIMUM_ENTRIES = 100000;
constexpr std::uint64_t MAXIMUM_DIRECTORY = std::uint64_t{16} * 1024 * 1024;

constexpr std::string_view DIRECTORY_MARK = "PK\x01\x02";
constexpr std::string_view SIGNATURE_MARK = "PK\x05\x05";
constexpr std::string_view END_MARK = "PK\x05\x06";
constexpr std::string_view ZIP64_END_MARK = "PK\x06\x06";
constexpr std::string_view ZIP64_LOCATOR_MARK = "PK\x06\x07";

// The sizes of these without names and other parts that vary.
constexpr std::size_t DIRECTORY_SIZE = 46;
constexpr std::size_t END_SIZE = 22;
constexpr std::size_t ZIP64_END_SIZE = 56;
constexpr std::size_t ZIP64_LOCATOR_SIZE = 20;

constexpr std::uint16_t ENCRYPTED = 1;
constexpr std::uint16_t HAS_DESCRIPTOR = 8;
constexpr std::uint16_t IS_UTF8 = 0x800;
constexpr std::uint16_t ZIP64_FIELD = 1;
constexpr std::uint16_t UNICODE_NAME_FIELD = 0x7075;

/// Gives `value` the next number of a ZIP64 field, if the short form says that it stands there.
void widen(std::uint64_t& value, std::string_view& field) {
  if (value != std::numeric_limits<std::uint32_t>::max()) {
    return;
  }
  if (field.size() < 8) {
    throw ZipProblem("has an entry without its ZIP64 sizes");
  }
  value = numberAt<std::uint64_t>(field, 0);
  field.remove_prefix(8);
}

/// Whether the mode of a Unix system, 0 where there is none, says that an entry is what its name
/// says: a file, or with a "/" at the end a folder.
bool isOfItsName(std::uint32_t mode, std::string_view name) noexcept {
  const std::uint32_t type = mode & S_IFMT;
  return type == 0 || type == S_IFREG || (type == S_IFDIR && !name.empty() && name.back() == '/');
}

/// Whether a number of the short form is what the long one says, or leaves it to that.
template <typename Number>
bool agrees(std::uint64_t value, std::string_view record, std::size_t at) noexcept {
  const auto shortValue = numberAt<Number>(record, at);
  return shortValue == value || shortValue == std::numeric_limits<Number>::max();
}

}  // namespace

void zip::readCommon(std::string_view record, std::string_view extra, ZipEntry& entry) {
  const auto flags = numberAt<std::uint16_t>(record, 0);
  entry.isUtf8 = (flags & IS_UTF8) != 0;
  entry.isEncrypted = (flags & ENCRYPTED) != 0;
  entry.hasDescriptor = (flags & HAS_DESCRIPTOR) != 0;
  entry.method = numberAt<std::uint16_t>(record, 2);
  entry.checksum = numberAt<std::uint32_t>(record, 8);
  entry.packedSize = numberAt<std::uint32_t>(record, 12);
  entry.size = numberAt<std::uint32_t>(record, 16);
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
  readHeaders();
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
    if (entry.name.find('\0') != std::string_view::npos) {
      throw ZipProblem("has an entry with a NUL in its name, where it ends for some programs");
    }
    entry.isLink = !isOfItsName(numberAt<std::uint32_t>(rest, 38) >> 16, entry.name);
    entry.header = numberAt<std::uint32_t>(rest, 42);
    zip::readCommon(rest.substr(8), rest.substr(DIRECTORY_SIZE + name, extra), entry);
    rest.remove_prefix(length);
  }
  if (!rest.empty() && !begins(rest, SIGNATURE_MARK)) {
    throw ZipProblem("has a damaged central directory");
  }
}

}  // namespace orvane::nimbrel::tools
