#include "tools/html/IconFinder.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "check/PackageFiles.h"
#include "tools/html/Image.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::size_t LARGEST = std::size_t{128} * 1024;  // bytes of an icon
constexpr std::size_t MOST_TRIED = 20;                    // icons of a record
constexpr const char* UNREADABLE = "not in the package, damaged or over 128 KiB";
constexpr const char* DEFAULTS[] = {"icon.svg", "icon.png", "icon.gif", "icon.jpg"};

}  // namespace

const IconImage& IconFinder::load(const std::string& path) {
  const auto [place, isNew] = images_.try_emplace(path);
  IconImage& image = place->second;
  if (!isNew) {
    return image;
  }
  std::optional<std::string> bytes = package_->read(path, std::min(LARGEST, leftToRead_));
  if (!bytes) {
    image.problem = leftToRead_ < LARGEST ? "too much was unpacked for this page" : UNREADABLE;
    return image;
  }
  leftToRead_ -= bytes->size();
  image.type = imageTypeOf(*bytes);
  if (image.type != nullptr) {
    image.bytes = std::move(*bytes);
  } else {
    image.problem = "no PNG, GIF or JPEG of up to 1024 pixels, and no simple SVG";
  }
  return image;
}

/// Chooses an icon if it can be shown; else tells why it cannot.
const char* IconFinder::tryPath(IconChoice& choice, const config::Config& record,
                                const std::string& path) {
  const char* problem = UNREADABLE;
  for (const std::string& locale : record.getUserAgentLocales()) {
    // At the root are the files for all languages.
    std::string folder = locale == "*" ? "" : "locales/" + locale + '/';
    const IconImage& icon = load(folder += path);
    if (icon.type != nullptr) {
      choice.image = &icon;
      choice.path = folder;
      return nullptr;
    }
    problem = icon.problem != UNREADABLE ? icon.problem : problem;
  }
  return problem;
}

IconChoice IconFinder::find(const config::Config& record) {
  IconChoice choice;
  if (package_ == nullptr) {
    return choice;
  }
  const std::vector<config::Config::Icon>& icons = record.getIcons();
  for (std::size_t i = 0; i < std::min(icons.size(), MOST_TRIED); ++i) {
    const char* const problem = tryPath(choice, record, check::resolvePath(icons[i].src));
    if (problem == nullptr) {
      return choice;
    }
    choice.problems.push_back(problem);
  }
  choice.isDefault = true;
  for (const char* const path : DEFAULTS) {
    if (tryPath(choice, record, path) == nullptr) {
      break;
    }
  }
  return choice;
}

}  // namespace orvane::nimbrel::tools
