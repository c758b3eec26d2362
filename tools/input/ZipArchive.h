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
  std::uint64_t header = 0;  ///< where its own header is
};

/// A ZIP archive that is read (PKWARE's APPNOTE.TXT, ZIP64 included), in time and memory linear in
/// its central directory, of which no more than 16 MiB and 100,000 entries are read.
///
/// Each offset and size is checked against the bytes there are. What the archive says in two places
/// has to be the same, or another program may read other content. Throws `ZipProblem`, and what
/// `Read` throws.
class ZipArchive {
 public:
  /// The bytes from `at` on; fewer than `count` only at the end.
  using Read = std::function<std::string(std::uint64_t at, std::size_t count)>;

  /// Finds the central directory and reads it.
  ZipArchive(Read read, std::uint64_t size);
  ZipArchive(const ZipArchive&) = delete;
  ZipArchive& operator=(const ZipArchive&) = delete;
  ~ZipArchive() = default;

  /// All entries, in the order of the directory.
  [[nodiscard]] const std::vector<ZipEntry>& entries() const noexcept { return entries_; }

  /// The content of an entry. No more than `limit` bytes and a piece are unpacked, whatever size
  /// the archive says.
  [[nodiscard]] std::string unpack(const ZipEntry& entry, std::size_t limit) const;

 private:
  struct End;

  [[nodiscard]] End findEnd() const;
  void readZip64(std::uint64_t endAt, End& end) const;
  void readDirectory(std::uint64_t count);
  void requireAgreement(const ZipEntry& entry, std::string_view header,
                        std::size_t extraSize) const;
  [[nodiscard]] std::uint64_t findContent(const ZipEntry& entry) const;
  [[nodiscard]] std::string inflate(const ZipEntry& entry, std::uint64_t at,
                                    std::size_t limit) const;

  Read read_;
  std::uint64_t size_;
  std::uint64_t directoryAt_ = 0;
  std::string directory_;
  std::vector<ZipEntry> entries_;
};

}  // namespace orvane::nimbrel::tools
