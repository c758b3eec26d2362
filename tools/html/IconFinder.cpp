#include "tools/html/IconFinder.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "check/PackageFiles.h"
#include "tools/html/Image.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::size_t LARGEST = std::size_t{128} * 1024;  // bytes of an icon
constexpr std::size_t MOST_TRIED = 20;                    // icons of a record
constexpr const char* DEFAULTS[] = {"icon.svg", "icon.png", "icon.gif", "icon.jpg"};

}  // namespace

const IconImage& IconFinder::load(const std::string& path) {
  const auto [place, isNew] = images_.try_emplace(path);
  IconImage& image = place->second;
  if (!isNew) {
    return image;
  }
  std::optional<std::string> bytes = package_->read(path, std::min(LARGEST, leftToRead_));
  if (bytes) {
    leftToRead_ -= bytes->size();
    image.type = imageTypeOf(*bytes);
    image.bytes = image.type != nullptr ? std::move(*bytes) : "";
  }
  return image;
}

const IconImage* IconFinder::find(const config::Config& record) {
  if (package_ == nullptr) {
    return nullptr;
  }
  std::vector<std::string> paths;
  const std::vector<config::Config::Icon>& icons = record.getIcons();
  for (std::size_t i = 0; i < std::min(icons.size(), MOST_TRIED); ++i) {
    paths.push_back(check::resolvePath(icons[i].src));
  }
  paths.insert(paths.end(), std::begin(DEFAULTS), std::end(DEFAULTS));
  for (const std::string& path : paths) {
    for (const std::string& locale : record.getUserAgentLocales()) {
      // At the root are the files for all languages.
      std::string folder = locale == "*" ? "" : "locales/" + locale + '/';
      const IconImage& icon = load(folder += path);
      if (icon.type != nullptr && icon.bytes.size() <= left_) {
        left_ -= icon.bytes.size();
        return &icon;
      }
    }
  }
  return nullptr;
}

}  // namespace orvane::nimbrel::tools
