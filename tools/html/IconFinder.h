#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "config/Config.h"
#include "tools/input/Package.h"

namespace orvane::nimbrel::tools {

/// An icon that a page can show.
struct IconImage {
  const char* type = nullptr;  ///< media type; null for what a page does not show
  std::string bytes;
  const char* problem = nullptr;  ///< why not
};

/// Which icon of an application is shown, and why no other.
struct IconChoice {
  const IconImage* image = nullptr;   ///< null when there is none; lives as long as the finder
  std::string path;                   ///< of the last one tried, in the package
  bool isDefault = false;             ///< whether the document does not name it
  std::vector<const char*> problems;  ///< of the record's first icons, which are not shown
};

/// Finds the icons of an application in its package. Each file is unpacked once, and no more of
/// them than a limit; an icon has a largest size.
class IconFinder {
 public:
  /// `package` is null for a document alone, which has no files.
  explicit IconFinder(std::shared_ptr<Package> package) noexcept : package_(std::move(package)) {}

  [[nodiscard]] bool hasPackage() const noexcept { return package_ != nullptr; }

  /// The first icon of a record that is in the package and can be shown, for users of the record's
  /// languages; else an icon that W3C Widgets use by default.
  [[nodiscard]] IconChoice find(const config::Config& record);

 private:
  [[nodiscard]] const IconImage& load(const std::string& path);

  std::shared_ptr<Package> package_;
  std::map<std::string, IconImage> images_;                 // by path
  std::size_t leftToRead_ = std::size_t{16} * 1024 * 1024;  // bytes
};

}  // namespace orvane::nimbrel::tools
