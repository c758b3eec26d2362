#include "tools/input/FileList.h"

#include <fnmatch.h>

#include <algorithm>
#include <filesystem>
#include <new>
#include <string_view>
#include <system_error>
#include <utility>

#include "tools/Failure.h"
#include "tools/input/Input.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::tools {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t MOST_NAMES = 100000;

/// What is in a directory, in the order of names; `error` says whether that is all.
std::vector<fs::directory_entry> entriesOf(const fs::path& directory, std::error_code& error) {
  std::vector<fs::directory_entry> entries;
  for (fs::directory_iterator at(directory, error), end; at != end; at.increment(error)) {
    entries.push_back(*at);
  }
  if (error == std::errc::not_enough_memory) {
    throw std::bad_alloc();
  }
  std::sort(entries.begin(), entries.end());
  return entries;
}

/// Whether a path, symbolic links resolved, is a directory or below it.
bool isWithin(const fs::path& path, const fs::path& directory) {
  std::error_code error;
  const fs::path resolved = fs::canonical(path, error);
  const fs::path whole = fs::canonical(directory, error);
  return !error &&
         std::mismatch(whole.begin(), whole.end(), resolved.begin(), resolved.end()).first ==
             whole.end();
}

/// Adds what is below a directory, which is `root` or below it.
void addFiles(std::vector<std::string>& files, const DirectoryRules& rules, const fs::path& root,
              const fs::path& directory) {
  std::error_code error;
  const std::vector<fs::directory_entry> entries = entriesOf(directory, error);
  if (error) {
    files.push_back(directory);  // reading it as a file says why, when its turn comes
  }
  for (const fs::directory_entry& entry : entries) {
    const std::string name = entry.path().filename();
    if (std::any_of(rules.excluded.begin(), rules.excluded.end(), [&](const std::string& glob) {
          return ::fnmatch(glob.c_str(), name.c_str(), 0) == 0;
        })) {
      continue;
    }
    const bool isLink = entry.is_symlink(error);
    if (!isLink && entry.is_directory(error)) {
      addFiles(files, rules, root, entry.path());
    } else if ((name == PACKAGED_DOCUMENT || isPackageName(name)) &&
               (!isLink || rules.followsLinksOut || isWithin(entry.path(), root))) {
      files.push_back(entry.path());
    }
  }
}

void addNames(std::vector<std::string>& names, const fs::path& folder, const std::string& prefix) {
  std::error_code error;
  for (const fs::directory_entry& entry : entriesOf(folder, error)) {
    const std::string name = entry.path().filename();
    if (name == ".git" || name == "node_modules") {
      continue;
    }
    const bool isFolder = entry.is_directory(error);
    const std::string path = prefix + name + (isFolder ? "/" : "");
    names.push_back(path);
    if (names.size() > MOST_NAMES) {
      throw DocumentFailure(EXIT_UNUSABLE, folder, {"more than 100000 files in a package"});
    }
    // A link to a folder in which it stands has no end.
    if (isFolder && !(entry.is_symlink(error) && isWithin(folder, entry.path()))) {
      addNames(names, entry.path(), path);
    }
  }
}

void addList(std::vector<std::string>& files, const std::string& path) {
  const std::string text = readList(path);
  const char end = text.find('\0') == std::string::npos ? '\n' : '\0';
  for (std::string& name : zel::util::StringUtil::split(text, end)) {
    if (!name.empty()) {
      files.push_back(std::move(name));
    }
  }
}

}  // namespace

std::vector<std::string> listFiles(std::vector<std::string> operands, const DirectoryRules* rules,
                                   const std::optional<std::string>& filesFrom) {
  if (filesFrom) {
    addList(operands, *filesFrom);
  }
  if (rules == nullptr) {
    return operands;
  }
  std::vector<std::string> files;
  for (std::string& name : operands) {
    if (std::error_code error; fs::is_directory(name, error)) {
      addFiles(files, *rules, name, name);
    } else {
      files.push_back(std::move(name));
    }
  }
  if (files.empty() && !operands.empty()) {
    throw Failure(EXIT_UNUSABLE,
                  "nimbrel-config: no files: no config.xml and no *.wgt in the directories given");
  }
  return files;
}

std::vector<std::string> namesBelow(const std::string& folder) {
  std::vector<std::string> names;
  addNames(names, folder, {});
  return names;
}

}  // namespace orvane::nimbrel::tools
