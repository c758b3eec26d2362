#include "tools/input/PackageContent.h"

#include <utility>

#include "check/PackageFiles.h"
#include "tools/input/EntryName.h"

namespace orvane::nimbrel::tools {

PackageContent::PackageContent(std::shared_ptr<const ZipArchive> archive)
    : archive_(std::move(archive)) {
  archive_->forEachEntry([&](const ZipEntry& entry) {
    const auto [place, isNew] = entries_.try_emplace(check::resolvePath(textOf(entry)), entry);
    if (!isNew) {
      place->second.reset();
    }
  });
}

std::optional<std::string> PackageContent::read(std::string_view path, std::size_t limit) const {
  const auto found = entries_.find(path);
  if (found == entries_.end() || !found->second || found->second->size > limit) {
    return std::nullopt;
  }
  try {
    return archive_->unpack(*found->second, limit);
  } catch (const ZipProblem&) {
    return std::nullopt;
  }
}

}  // namespace orvane::nimbrel::tools
