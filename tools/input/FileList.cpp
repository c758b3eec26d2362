#include "tools/input/FileList.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

#include "tools/input/Input.h"
#include "tools/input/Package.h"

namespace orvane::nimbrel::tools {
namespace {

/// What is in a directory, in the order of names; nothing when it cannot be read.
class Listing {
 public:
  explicit Listing(const std::string& directory)
      : count_(::scandir(directory.c_str(), &entries_, nullptr, byName)) {
    if (count_ < 0 && errno == ENOMEM) {
      throw std::bad_alloc();
    }
  }
  Listing(const Listing&) = delete;
  Listing& operator=(const Listing&) = delete;
  ~Listing() {
    std::for_each(begin(), end(), ::free);
    ::free(entries_);
  }

  [[nodiscard]] bool isReadable() const noexcept { return count_ >= 0; }
  [[nodiscard]] dirent** begin() const noexcept { return entries_; }
  [[nodiscard]] dirent** end() const noexcept { return entries_ + std::max(count_, 0); }

 private:
  static int byName(const dirent** one, const dirent** other) {
    return std::strcmp((*one)->d_name, (*other)->d_name);
  }

  dirent** entries_ = nullptr;
  int count_;
};

bool isWanted(std::string_view name) noexcept {
  constexpr std::string_view PACKAGE = ".wgt";
  return name == PACKAGED_DOCUMENT ||
         (name.size() > PACKAGE.size() && name.substr(name.size() - PACKAGE.size()) == PACKAGE);
}

bool isDirectory(const std::string& path) noexcept {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// Whether an entry is a directory, and no symbolic link to one.
bool isDirectory(const dirent& entry, const std::string& path) noexcept {
  struct stat status {};
  return entry.d_type == DT_UNKNOWN ? ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)
                                    : entry.d_type == DT_DIR;
}

// Neither std::filesystem nor fts, which end the process when memory runs out.
void addDirectory(std::vector<std::string>& files, const std::string& directory) {
  const std::string prefix = directory.back() == '/' ? directory : directory + '/';
  const Listing listing(directory);
  if (!listing.isReadable()) {
    files.push_back(directory);  // reading it as a file says why, when its turn comes
  }
  for (const dirent* entry : listing) {
    const std::string_view name = entry->d_name;
    std::string path = prefix + entry->d_name;
    if (name == "." || name == "..") {
      continue;
    }
    if (isDirectory(*entry, path)) {
      addDirectory(files, path);
    } else if (isWanted(name)) {
      files.push_back(std::move(path));
    }
  }
}

void addList(std::vector<std::string>& files, const std::string& path) {
  const std::string text = readList(path);
  const char end = text.find('\0') == std::string::npos ? '\n' : '\0';
  for (std::string_view rest = text; !rest.empty();) {
    const std::string_view name = rest.substr(0, rest.find(end));
    if (!name.empty()) {
      files.emplace_back(name);
    }
    rest.remove_prefix(std::min(rest.size(), name.size() + 1));
  }
}

}  // namespace

std::vector<std::string> listFiles(std::vector<std::string> operands, bool recursive,
                                   const std::optional<std::string>& filesFrom) {
  if (filesFrom) {
    addList(operands, *filesFrom);
  }
  if (!recursive) {
    return operands;
  }
  std::vector<std::string> files;
  for (std::string& name : operands) {
    if (isDirectory(name)) {
      addDirectory(files, name);
    } else {
      files.push_back(std::move(name));
    }
  }
  return files;
}

}  // namespace orvane::nimbrel::tools
