#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/input/ZipArchive.h"

namespace orvane::nimbrel::tools {

/// The name that stands for standard input.
inline constexpr char STANDARD_INPUT[] = "-";

/// A document as it was found.
struct Document {
  std::string name;  ///< what messages call it: the path, for a package with the entry
  std::optional<std::string> bytes;  ///< none: a regular file that the library may read itself
  /// The names of all entries of the package in which it stands; none for a document alone.
  std::optional<std::vector<std::string>> package = std::nullopt;
  /// That package, which may be read as long as the pointer lives; null for a document alone.
  std::shared_ptr<const ZipArchive> archive = nullptr;
  std::uint64_t fileSize = 0;  ///< of that regular file, when there are no bytes
};

/// Finds the document that `path` stands for: a regular file, the "config.xml" of a packaged
/// widget, or either on standard input ("-").
///
/// Throws `Failure` with `EXIT_UNUSABLE` when it cannot be read, with `EXIT_REJECTED` when it has
/// 2 GiB or more or a package has no usable document. What is no regular file is not opened.
///
/// `stdinName` is what messages call standard input.
Document findDocument(const std::string& path, const std::string& stdinName);

/// The same with the bytes in any case.
Document readDocument(const std::string& path, const std::string& stdinName);

/// All bytes of a list of files, which may be a FIFO, or standard input ("-"). Throws `Failure`.
std::string readList(const std::string& path);

}  // namespace orvane::nimbrel::tools
