#include "tools/commands/FileOptions.h"

#include <sys/resource.h>

#include <algorithm>
#include <thread>
#include <utility>

#include "tools/input/FileList.h"

namespace orvane::nimbrel::tools {
namespace {

/// Each job has a file open. Half of those that may be open are left to everything else.
unsigned int possibleJobs(unsigned int wanted) noexcept {
  rlimit limit{};
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) {
    return wanted;
  }
  return static_cast<unsigned int>(std::clamp<rlim_t>(limit.rlim_cur / 2, 1, std::max(1U, wanted)));
}

}  // namespace

void FileSettings::findFiles(std::vector<std::string> operands, bool isForChange) {
  const DirectoryRules rules = {
      excluded.value_or(std::vector<std::string>{".git", "node_modules", "build"}), !isForChange};
  files = listFiles(std::move(operands), recursive ? &rules : nullptr, filesFrom);
  jobs = possibleJobs(jobs == 0 ? std::thread::hardware_concurrency() : jobs);
  if (std::count(files.begin(), files.end(), STANDARD_INPUT) > 1) {
    jobs = 1;  // the first reads all of it
  }
}

}  // namespace orvane::nimbrel::tools
