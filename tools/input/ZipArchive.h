#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::nimbrel::tools {

/// What is wrong with an archive, as the rest of "it ...".
class ZipProblem : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What the central directory of an archive says of an entry. The name lives as long as the
/// archive.
struct ZipEntry {
  std::string_view name;
  /// The same in UTF-8, which some programs add to a name in another encoding and some go by; empty
  /// when there is none that belongs to the name.
  std::string_view unicodeName = {};
  bool isUtf8 = false;  ///< so the archive calls the name
  bool isEncrypted = false;
  bool hasDescriptor = false;  ///< its sizes stand behind its content too
  std::uint16_t method = 0;
  std::uint32_t checksum = 0;
  std::uint64_t packedSize = 0;
  std::uint64_t size = 0;
  std::uint64_t header = 0;   ///< where its own header is
  std::uint64_t content = 0;  ///< and the packed content
  /// Whether it is neither a file nor a folder: a symbolic link, or a device.
  bool isLink = false;
};

/// A ZIP archive that is read (PKWARE's APPNOTE.TXT, ZIP64 included), in time and memory linear in
/// its central directory, of which no more than 16 MiB and 100,000 entries are read, apart from
/// sorting it.
///
/// Each offset and size is checked against the bytes there are. Another program may go by the
/// entries' own headers, or read from the front: what the archive says in two places has to be the
/// same, no byte may belong to two entries, and no entry may be missing in the directory. Throws
/// `ZipProblem`, and what `Read` throws.
class ZipArchive {
 public:
  /// The bytes from `at` on; fewer than `count` only at the end.
  using Read = std::function<std::string(std::uint64_t at, std::size_t count)>;

  /// Finds the central directory and reads it, and all headers of entries.
  ZipArchive(Read read, std::uint64_t size);
  ZipArchive(const ZipArchive&) = delete;
  ZipArchive& operator=(const ZipArchive&) = delete;
  ~ZipArchive() = default;

  /// All entries, in the order of the directory.
  [[nodiscard]] const std::vector<ZipEntry>& entries() const noexcept { return entries_; }

  /// How many bytes belong neither to an entry nor to the directory.
  [[nodiscard]] std::uint64_t unlistedBytes() const noexcept { return unlistedBytes_; }

  /// The content of an entry. No more than `limit` bytes and one are unpacked, whatever size
  /// the archive says. Throws `ZipProblem` for an entry of more than 1 MiB and a hundred times its
  /// packed size, too.
  [[nodiscard]] std::string unpack(const ZipEntry& entry, std::size_t limit) const;

 private:
  struct End;

  [[nodiscard]] End findEnd() const;
  void readZip64(std::uint64_t endAt, End& end) const;
  void readDirectory(std::uint64_t count);
  void readHeaders();
  void readHeader(ZipEntry& entry) const;
  [[nodiscard]] std::uint64_t descriptorSize(const ZipEntry& entry) const;
  void addUnlisted(std::uint64_t from, std::uint64_t to);
  [[nodiscard]] std::string inflate(const ZipEntry& entry, std::size_t limit) const;

  Read read_;
  std::uint64_t size_;
  std::uint64_t directoryAt_ = 0;
  std::string directory_;
  std::vector<ZipEntry> entries_;
  std::uint64_t unlistedBytes_ = 0;
};

/// The parts of an archive, for those who read it.
namespace zip {

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

}  // namespace zip

}  // namespace orvane::nimbrel::tools
