#include "tools/input/FileList.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "tools/input/Input.h"
#include "tools/input/Package.h"

namespace orvane::nimbrel::tools {
namespace {

namespace fs = std::filesystem;

bool isWanted(std::string_view name) noexcept {
  constexpr std::string_view PACKAGE = ".wgt";
  return name == PACKAGED_DOCUMENT ||
         (name.size() > PACKAGE.size() && name.substr(name.size() - PACKAGE.size()) == PACKAGE);
}

void addDirectory(std::vector<std::string>& files, const fs::path& directory) {
  std::error_code error;
  std::vector<fs::directory_entry> entries;
  for (fs::directory_iterator at(directory, error), end; at != end; at.increment(error)) {
    entries.push_back(*at);
  }
  if (error) {
    files.push_back(directory);  // reading it as a file says why, when its turn comes
  }
  std::sort(entries.begin(), entries.end());
  for (const fs::directory_entry& entry : entries) {
    if (!entry.is_symlink(error) && entry.is_directory(error)) {
      addDirectory(files, entry.path());
    } else if (isWanted(entry.path().filename().native())) {
      files.push_back(entry.path());
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
    if (std::error_code error; fs::is_directory(name, error)) {
      addDirectory(files, name);
    } else {
      files.push_back(std::move(name));
    }
  }
  return files;
}

}  // namespace orvane::nimbrel::tools
