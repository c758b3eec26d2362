#include "tools/input/Package.h"

#include <strings.h>

#include <algorithm>
#include <utility>

#include "check/Decoder.h"
#include "check/PackageFiles.h"
#include "tools/Failure.h"
#include "util/Ascii.h"
#include "util/Utf8.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::size_t MAXIMUM_DOCUMENT_SIZE = std::size_t{16} * 1024 * 1024;

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

bool isUtf8(std::string_view text) noexcept {
  for (std::size_t at = 0; at < text.size();) {
    if (util::internal::decodeUtf8(text, at) == util::internal::NOT_UTF8) {
      return false;
    }
  }
  return true;
}

/// Whether programs that go by the field for a name in UTF-8, which is meant for other names, see
/// another file.
bool isDoubtful(const ZipEntry& entry, bool isDocument) {
  return !entry.unicodeName.empty() && entry.unicodeName != entry.name &&
         (isUtf8(entry.name) || isDocument != (entry.unicodeName == PACKAGED_DOCUMENT));
}

/// The name of an entry in UTF-8. One that is no UTF-8 is what its field for UTF-8 says; without
/// that, it is in code page 437, as the format (APPNOTE.TXT, appendix D) and W3C Widgets say.
std::string textOf(const ZipEntry& entry) {
  if (entry.isUtf8 || isUtf8(entry.name)) {
    return std::string(entry.name);
  }
  std::string text(entry.unicodeName);
  std::vector<std::uint32_t> offsets;
  if (text.empty() && !check::decode(entry.name, "ibm-437", text, offsets)) {
    return std::string(entry.name);  // an ICU without that code page
  }
  return text;
}

DocumentFailure unusable(const std::string& path, const std::string& sentence) {
  return {EXIT_REJECTED, path, {sentence, 0, 0, check::FindingCode::UNUSABLE_PACKAGE}};
}

/// The archive, or the reason why there is none.
ZipArchive open(ZipArchive::Read read, std::uint64_t size, const std::string& path) {
  try {
    return {std::move(read), size};
  } catch (const ZipProblem& problem) {
    throw unusable(path,
                   std::string("The package is no usable ZIP archive: it ") + problem.what() + '.');
  }
}

}  // namespace

bool isPackage(std::string_view bytes) noexcept {
  const std::string_view head = bytes.substr(0, 4);
  return head == "PK\x03\x04" || head == "PK\x05\x06";
}

bool isPackageName(const std::string& name) {
  constexpr std::string_view ENDING = ".wgt";
  return name.size() > ENDING.size() &&
         util::ascii::lowerCased(name.substr(name.size() - ENDING.size())) == ENDING;
}

void rejectNamedPackage(const std::string& path, const std::string& bytes) {
  constexpr std::string_view KINDS[][2] = {{"\x1F\x8B", "a gzip file; pack it with zip"},
                                           {"<!doctype html", "an HTML page"},
                                           {"<html", "an HTML page"}};
  const std::string head = util::ascii::lowerCased(bytes);
  const std::size_t begin = std::min(head.find_first_not_of("\xEF\xBB\xBF \t\r\n"), head.size());
  for (const auto& [mark, kind] : KINDS) {
    if (isPackageName(path) && head.compare(begin, mark.size(), mark) == 0) {
      throw unusable(path, "The package is no ZIP archive: it is " + std::string(kind) + '.');
    }
  }
}

Package::Package(ZipArchive::Read read, std::uint64_t size, const std::string& path)
    : path_(path), archive_(open(std::move(read), size, path)), document_(findDocument()) {}

check::PackageContents Package::contents() const {
  check::PackageContents contents;
  contents.names.reserve(archive_.entries().size());
  for (const ZipEntry& entry : archive_.entries()) {
    contents.names.push_back(textOf(entry));
    if (entry.isLink) {
      contents.links.push_back(contents.names.back());
    }
  }
  contents.unlistedBytes = archive_.unlistedBytes();
  return contents;
}

const ZipEntry& Package::findDocument() const {
  const ZipEntry* found = nullptr;
  std::string similar;
  for (const ZipEntry& entry : archive_.entries()) {
    const bool isDocument = entry.name == PACKAGED_DOCUMENT;
    // Which of two counts depends on who reads the archive: no telling what a runtime will do.
    if (isDocument && found != nullptr) {
      throw unusable(path_, "The package has more than one config.xml at its root.");
    }
    if (isDoubtful(entry, isDocument)) {
      throw unusable(path_, "The package has an entry, '" + std::string(entry.name) +
                                "', that is '" + std::string(entry.unicodeName) +
                                "' to some programs.");
    }
    if (isDocument) {
      found = &entry;
    } else if (isSimilar(entry.name)) {
      similar = "; '" + std::string(entry.name) + "' is another name";
    } else if (const std::size_t folder = entry.name.find('/') + 1;
               similar.empty() && entry.name.substr(folder) == PACKAGED_DOCUMENT) {
      similar = ", but in '" + std::string(entry.name.substr(0, folder)) +
                "'; pack the contents of this folder, not the folder";
    }
  }
  if (found == nullptr) {
    throw unusable(path_, "The package has no config.xml at its root" + similar + '.');
  }
  return *found;
}

std::string Package::document() const {
  if (document_.isLink) {
    throw unusable(path_, "The config.xml of the package is a symbolic link, or no file.");
  }
  if (document_.size > MAXIMUM_DOCUMENT_SIZE) {
    throw unusable(path_, "The config.xml of the package is larger than 16 MiB.");
  }
  try {
    return archive_.unpack(document_, MAXIMUM_DOCUMENT_SIZE);
  } catch (const ZipProblem& problem) {
    throw unusable(path_, std::string("The config.xml of the package cannot be unpacked: it ") +
                              problem.what() + '.');
  }
}

std::optional<std::string> Package::read(std::string_view path, std::size_t limit) {
  const std::vector<ZipEntry>& entries = archive_.entries();
  for (std::size_t i = files_.empty() ? 0 : entries.size(); i < entries.size(); ++i) {
    const auto [place, isNew] =
        files_.try_emplace(check::resolvePath(textOf(entries[i])), &entries[i]);
    if (!isNew) {
      place->second = nullptr;
    }
  }
  const auto found = files_.find(path);
  if (found == files_.end() || found->second == nullptr || found->second->isLink ||
      found->second->size > limit) {
    return std::nullopt;
  }
  try {
    return archive_.unpack(*found->second, limit);
  } catch (const ZipProblem&) {
    return std::nullopt;
  }
}

}  // namespace orvane::nimbrel::tools
