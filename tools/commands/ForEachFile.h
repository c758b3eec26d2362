#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "tools/Host.h"
#include "tools/commands/Command.h"
#include "tools/commands/InOrder.h"

namespace orvane::nimbrel::tools {

/// A line on a terminal's standard error that says how far work has come that takes longer than a
/// second. Nothing is written elsewhere.
class Progress {
 public:
  /// `total` files; `wanted` unless the user does without; `counted` is "findings" or the like.
  Progress(std::size_t total, bool wanted, const char* counted) noexcept;
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { clear(); }

  /// So many files are done, with so many of what `counted` names. To be called after each.
  void update(std::size_t done, std::size_t count);
  /// Takes the line away, before something else is written.
  void clear() noexcept;

 private:
  using Clock = std::chrono::steady_clock;

  std::size_t total_;
  bool wanted_;
  const char* counted_;
  bool shown_ = false;
  Clock::time_point begin_ = Clock::now();
  Clock::time_point next_ = begin_ + std::chrono::seconds(1);
};

/// Hands each file to `work`, several at a time on as many threads, and what that returns to
/// `deliver`, in the order of the files and one at a time, with the name that messages use.
///
/// `deliver` prints the result. It clears the progress line before it writes to a terminal, and
/// returns the number for that line: how many there are so far of what `counted` names.
template <typename Work, typename Deliver>
void forEachFile(const Options& options, const char* counted, const Work& work,
                 const Deliver& deliver) {
  const std::vector<std::string>& files = options.files;
  const unsigned int jobs =
      files.size() == 1 ? 1 : static_cast<unsigned int>(options.jobs.value_or(1));
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
  Progress progress(files.size(), !options.noProgress, counted);
  doInOrder(
      files.size(), jobs, endOfSlice, [&](std::size_t index) { return work(files[index]); },
      [&](std::size_t index, auto result) {
        const std::string& name = options.nameOf(files[index]);
        progress.update(index + 1, deliver(name, std::move(result), progress));
      });
}

}  // namespace orvane::nimbrel::tools
