#pragma once

#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>

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
  using Result = std::invoke_result_t<Work, const std::string&>;
  if (settings.files.size() > 1) {
    keepFreedMemory();
  }
  Progress progress(settings.files.size(), settings.progress, counted);
  InOrder<Result>(
      settings.files.size(), settings.jobs,
      [&](std::size_t index) { return work(settings.files[index]); },
      [&](std::size_t index, Result result) {
        const std::string& name = settings.nameOf(settings.files[index]);
        progress.update(index + 1, deliver(name, std::move(result), progress));
      })
      .run();
}

}  // namespace orvane::nimbrel::tools
