#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "check/PackageFiles.h"
#include "tools/input/ZipArchive.h"

namespace orvane::nimbrel::tools {

/// The name of the document in a packaged widget.
inline constexpr char PACKAGED_DOCUMENT[] = "config.xml";

/// Whether bytes begin as a ZIP archive does. Four are enough.
[[nodiscard]] bool isPackage(std::string_view bytes) noexcept;

/// Whether a file is named like a packaged widget: "*.wgt", in any case.
[[nodiscard]] bool isPackageName(const std::string& name);
/// Throws `DocumentFailure` with `EXIT_REJECTED` if a file of such a name begins like a web page or
/// another archive; `bytes` are its first ones.
void rejectNamedPackage(const std::string& path, const std::string& bytes);

/// A packaged widget: a ZIP archive with a document at its root. Nothing is written, and a file is
/// unpacked when it is asked for. For one thread.
class Package {
 public:
  /// `read` gives the bytes of the archive, `path` is for messages.
  ///
  /// Throws `DocumentFailure` with `EXIT_REJECTED` for what is no ZIP archive and for one that
  /// holds no document or more than one; and what `read` throws.
  Package(ZipArchive::Read read, std::uint64_t size, const std::string& path);
  Package(const Package&) = delete;
  Package& operator=(const Package&) = delete;
  ~Package() = default;

  /// What its directory says.
  [[nodiscard]] check::PackageContents contents() const;

  /// The bytes of the document. Throws `DocumentFailure` with `EXIT_REJECTED` for one that is
  /// encrypted, damaged, compressed in an unknown way or over 16 MiB, whatever the archive says of
  /// its size.
  [[nodiscard]] std::string document() const;

  /// The content of the file at a path, as `check::resolvePath` gives it. None when there is no
  /// such file, or several, and for one that is larger than `limit` bytes or cannot be unpacked.
  [[nodiscard]] std::optional<std::string> read(std::string_view path, std::size_t limit);

 private:
  [[nodiscard]] const ZipEntry& findDocument() const;

  std::string path_;
  ZipArchive archive_;
  const ZipEntry& document_;
  // By path, once one was asked for; null: several.
  std::map<std::string, const ZipEntry*, std::less<>> files_;
};

}  // namespace orvane::nimbrel::tools
