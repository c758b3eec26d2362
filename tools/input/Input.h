#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/PackageFiles.h"
#include "tools/input/Package.h"

namespace orvane::nimbrel::tools {

/// The name that stands for standard input.
inline constexpr char STANDARD_INPUT[] = "-";

/// A document as it was found.
struct Document {
  std::string name;  ///< what messages call it: the path, for a package or folder with the entry
  std::string bytes;
  std::shared_ptr<Package> package = nullptr;  ///< in which it stands; null if in none
  /// The folder in which it stands, if that is an unpacked package.
  std::optional<std::string> folder = std::nullopt;

  /// What is in that package, packed or not. Throws `DocumentFailure` with `EXIT_UNUSABLE` for a
  /// folder with more than 100,000 files.
  [[nodiscard]] std::optional<check::PackageContents> contents() const;
};

/// The "config.xml" of a folder that has one; any other path as it is.
[[nodiscard]] std::string documentOf(const std::string& path);

/// Reads the document that `path` stands for: a regular file, the "config.xml" of a packaged
/// widget, either on standard input ("-"), or the "config.xml" of a folder.
///
/// Throws `Failure` with `EXIT_UNUSABLE` when it cannot be read, with `EXIT_REJECTED` when it has
/// 2 GiB or more or a package has no usable document. What is no regular file is not opened.
///
/// `stdinName` is what messages call standard input. If `isUnpacked`, a "config.xml" stands in an
/// unpacked package.
Document readDocument(const std::string& path, const std::string& stdinName,
                      bool isUnpacked = false);

/// All bytes of a list of files, which may be a FIFO, or standard input ("-"). Throws `Failure`.
std::string readList(const std::string& path);

}  // namespace orvane::nimbrel::tools
