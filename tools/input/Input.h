#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/input/Package.h"

namespace orvane::nimbrel::tools {

/// The name that stands for standard input.
inline constexpr char STANDARD_INPUT[] = "-";

/// A document as it was found.
struct Document {
  std::string name;  ///< what messages call it: the path, for a package with the entry
  std::optional<std::string> bytes;  ///< none: a regular file that the library may read itself
  std::shared_ptr<Package> package = nullptr;  ///< in which it stands; null for a document alone

  /// The names of all entries of that package.
  [[nodiscard]] std::optional<std::vector<std::string>> names() const {
    return package == nullptr ? std::nullopt : std::make_optional(package->names());
  }
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
