#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tools/input/ZipArchive.h"

namespace orvane::nimbrel::tools {

/// The name of the document in a packaged widget.
inline constexpr char PACKAGED_DOCUMENT[] = "config.xml";

/// Whether bytes begin as a ZIP archive does. Four are enough.
[[nodiscard]] bool isPackage(std::string_view bytes) noexcept;

/// What a packaged widget holds.
struct Package {
  std::string document;
  std::vector<std::string> names;  ///< of all entries, UTF-8 as far as they are text
  std::shared_ptr<const ZipArchive> archive;
};

/// The document at the root of a packaged widget of this size, and the names of all entries.
/// Nothing else is unpacked, nothing is written. The archive keeps `read` and what it holds.
///
/// `path` is for messages. Throws `DocumentFailure` with `EXIT_REJECTED` for what is no ZIP
/// archive, for one that holds no document or more than one, and for a document that is encrypted,
/// damaged, compressed in an unknown way or over 16 MiB, whatever the archive says of its size.
[[nodiscard]] Package readPackage(const ZipArchive::Read& read, std::uint64_t size,
                                  const std::string& path);

}  // namespace orvane::nimbrel::tools
