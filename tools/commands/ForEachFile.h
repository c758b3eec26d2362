#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "tools/Host.h"
#include "tools/commands/FileOptions.h"
#include "tools/commands/InOrder.h"
#include "tools/commands/Progress.h"

namespace orvane::nimbrel::tools {

/// Hands each file to `work`, several at a time on as many threads, and what that returns to
/// `deliver`, in the order of the files and one at a time, with the name that messages use.
///
/// `deliver` prints the result. It clears the progress line before it writes to a terminal, and
/// returns the number for that line: how many there are so far of what `counted` names.
template <typename Work, typename Deliver>
void forEachFile(const FileSettings& settings, const char* counted, const Work& work,
                 const Deliver& deliver) {
  const std::vector<std::string>& files = settings.files;
  const unsigned int jobs = files.size() == 1 ? 1 : settings.jobs;
  if (files.size() > 1) {
    keepFreedMemory();
  }
  // A slice for each thread would leave some without work at the end.
  const std::size_t most = jobs == 1 ? 1 : std::clamp<std::size_t>(files.size() / jobs / 4, 1, 32);
  const auto endOfSlice = [&](std::size_t begin) {
    constexpr std::uintmax_t LARGE = 1U << 20U;  // what is made of it waits in memory
    const std::size_t last = std::min(files.size(), begin + most);
    std::uintmax_t bytes = 0;
    std::size_t end = begin;
    for (; end < last && bytes < LARGE; ++end) {
      std::error_code error;
      const std::uintmax_t size = most == 1 ? 0 : std::filesystem::file_size(files[end], error);
      bytes += error ? 0 : size;
    }
    return end;
  };
  Progress progress(files.size(), settings.progress, counted);
  doInOrder(
      files.size(), jobs, endOfSlice, [&](std::size_t index) { return work(files[index]); },
      [&](std::size_t index, auto result) {
        const std::string& name = settings.nameOf(files[index]);
        progress.update(index + 1, deliver(name, std::move(result), progress));
      });
}

}  // namespace orvane::nimbrel::tools
