#include "tools/input/FileList.h"

#include <fts.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <system_error>
#include <utility>

#include "tools/Failure.h"
#include "tools/input/Input.h"
#include "tools/input/Package.h"

namespace orvane::nimbrel::tools {
namespace {

DocumentFailure unreadable(const std::string& path, int error) {
  if (error == ENOMEM) {
    throw std::bad_alloc();
  }
  return {EXIT_UNUSABLE, path, {"cannot be read: " + std::generic_category().message(error)}};
}

struct CloseTree {
  void operator()(FTS* tree) const noexcept { ::fts_close(tree); }
};

int byName(const FTSENT** one, const FTSENT** other) {
  return std::strcmp((*one)->fts_name, (*other)->fts_name);
}

bool isWanted(std::string_view name) noexcept {
  constexpr std::string_view PACKAGE = ".wgt";
  return name == PACKAGED_DOCUMENT ||
         (name.size() > PACKAGE.size() && name.substr(name.size() - PACKAGE.size()) == PACKAGE);
}

// Not std::filesystem, which ends the process when memory runs out.
void addDirectory(std::vector<std::string>& files, const std::string& directory) {
  std::string root = directory;
  char* const roots[] = {root.data(), nullptr};
  const std::unique_ptr<FTS, CloseTree> tree(
      ::fts_open(roots, FTS_PHYSICAL | FTS_NOCHDIR | FTS_NOSTAT, byName));
  if (tree == nullptr) {
    throw unreadable(directory, errno);
  }
  errno = 0;
  while (const FTSENT* const entry = ::fts_read(tree.get())) {
    switch (entry->fts_info) {
      case FTS_DNR:
      case FTS_ERR:
        throw unreadable(entry->fts_path, entry->fts_errno);
      case FTS_D:
      case FTS_DP:
      case FTS_DC:
        break;
      default:
        if (isWanted(entry->fts_name)) {
          files.emplace_back(entry->fts_path);
        }
    }
    errno = 0;
  }
  if (errno != 0) {
    throw unreadable(directory, errno);
  }
}

bool isDirectory(const std::string& path) noexcept {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
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
