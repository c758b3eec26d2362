#include "tools/input/Package.h"

#include <strings.h>

#include <optional>

#include "tools/Failure.h"
#include "tools/input/EntryName.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::size_t MAXIMUM_SIZE = std::size_t{16} * 1024 * 1024;

/// Whether somebody may take the name for that of the document. Names are compared as bytes, as a
/// runtime does.
bool isSimilar(std::string_view name) {
  while (name.substr(0, 2) == "./") {
    name.remove_prefix(2);
  }
  if (name.substr(0, 1) == "/") {
    name.remove_prefix(1);
  }
  return name.size() + 1 == sizeof(PACKAGED_DOCUMENT) &&
         ::strncasecmp(name.data(), PACKAGED_DOCUMENT, name.size()) == 0;
}

/// Whether programs to which a name ends at a NUL, or is what its field for UTF-8 says, see another
/// entry as the document.
bool isDoubtful(const ZipEntry& entry, bool isDocument) {
  const auto isForSome = [](std::string_view name) {
    return name.substr(0, name.find('\0')) == PACKAGED_DOCUMENT;
  };
  return isForSome(entry.name) != isDocument ||
         (!entry.unicodeName.empty() && isForSome(entry.unicodeName) != isDocument);
}

ZipEntry findDocument(const ZipArchive& archive, const std::string& path,
                      std::vector<std::string>& names) {
  std::optional<ZipEntry> found;
  std::string similar;
  archive.forEachEntry([&](const ZipEntry& entry) {
    names.push_back(textOf(entry));
    const bool isDocument = entry.name == PACKAGED_DOCUMENT;
    // Which of two counts depends on who reads the archive: no telling what a runtime will do.
    if (isDocument && found) {
      throw rejection(path, "more than one config.xml at the root of the archive");
    }
    if (isDoubtful(entry, isDocument)) {
      throw rejection(path, "an entry that is config.xml to some programs and not to others");
    }
    if (isDocument) {
      found = entry;
    } else if (isSimilar(entry.name)) {
      similar = entry.name;
    }
  });
  if (!found) {
    throw rejection(path, "no config.xml at the root of the archive" +
                              (similar.empty() ? similar : ", and '" + similar + "' is another"));
  }
  return *found;
}

}  // namespace

bool isPackage(std::string_view bytes) noexcept {
  const std::string_view head = bytes.substr(0, 4);
  return head == "PK\x03\x04" || head == "PK\x05\x06";
}

Package readPackage(const ZipArchive::Read& read, std::uint64_t size, const std::string& path) {
  Package package;
  ZipEntry document;
  try {
    package.archive = std::make_shared<const ZipArchive>(read, size);
    document = findDocument(*package.archive, path, package.names);
  } catch (const ZipProblem& problem) {
    throw rejection(path, std::string("no usable ZIP archive: it ") + problem.what());
  }
  if (document.size > MAXIMUM_SIZE) {
    throw rejection(path, "config.xml is larger than 16 MiB");
  }
  try {
    package.document = package.archive->unpack(document, MAXIMUM_SIZE);
    return package;
  } catch (const ZipProblem& problem) {
    throw rejection(path, std::string("config.xml cannot be unpacked: it ") + problem.what());
  }
}

}  // namespace orvane::nimbrel::tools
