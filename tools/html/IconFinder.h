#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "config/Config.h"
#include "tools/input/PackageContent.h"

namespace orvane::nimbrel::tools {

/// An icon that a page can show.
struct IconImage {
  const char* type = nullptr;  ///< media type
  std::string bytes;
};

/// Finds the icons of an application in its package, and keeps what they add to a page within a
/// limit.
class IconFinder {
 public:
  /// `archive` is null for a document alone, which has no files.
  explicit IconFinder(const std::shared_ptr<const ZipArchive>& archive);

  [[nodiscard]] bool hasPackage() const noexcept { return content_.has_value(); }

  /// The first icon of a record that is in the package and can be shown, for users of the record's
  /// languages; else an icon that W3C Widgets use by default. None when there is neither.
  [[nodiscard]] std::optional<IconImage> find(const config::Config& record);

 private:
  [[nodiscard]] std::optional<IconImage> load(const std::string& path);

  std::optional<PackageContent> content_;
  std::size_t left_;  // bytes
};

}  // namespace orvane::nimbrel::tools
