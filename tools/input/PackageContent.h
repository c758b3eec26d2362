#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tools/input/ZipArchive.h"

namespace orvane::nimbrel::tools {

/// The files of a package by their paths, each unpacked when it is asked for.
///
/// Time and memory grow with the number of entries, apart from the sorting. Throws what reading the
/// archive throws, and `std::bad_alloc`.
class PackageContent {
 public:
  /// Of an archive whose directory was read before without a problem.
  explicit PackageContent(std::shared_ptr<const ZipArchive> archive);

  /// The content of the file at a path, as `check::resolvePath` gives it. None when there is no
  /// such file, or several, and for one that is larger than `limit` bytes or cannot be unpacked.
  [[nodiscard]] std::optional<std::string> read(std::string_view path, std::size_t limit) const;

 private:
  std::shared_ptr<const ZipArchive> archive_;
  std::map<std::string, std::optional<ZipEntry>, std::less<>> entries_;  // none: several
};

}  // namespace orvane::nimbrel::tools
