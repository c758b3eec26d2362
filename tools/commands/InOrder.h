#pragma once

#include <cstddef>
#include <future>
#include <queue>
#include <type_traits>
#include <utility>
#include <vector>

namespace orvane::nimbrel::tools {

/// Does `count` pieces of work, as many slices of them at a time as there are jobs, and delivers
/// the results in order on this thread. No more results are in memory than those of a slice for
/// each job and one, however slow `deliver` is. A single job takes no thread.
///
/// `endOfSlice(begin)` says where the slice ends that begins with a piece. What `deliver` or, when
/// the turn of its slice comes, `work` throws ends all; no thread is left then.
template <typename EndOfSlice, typename Work, typename Deliver>
void doInOrder(std::size_t count, unsigned int jobs, const EndOfSlice& endOfSlice, const Work& work,
               const Deliver& deliver) {
  using Results = std::vector<std::invoke_result_t<Work, std::size_t>>;
  // A thread that cannot be started is done without.
  const std::launch how =
      jobs == 1 ? std::launch::deferred : std::launch::async | std::launch::deferred;
  std::queue<std::future<Results>> slices;
  std::size_t begun = 0;
  const auto beginNext = [&] {
    const std::size_t end = endOfSlice(begun);
    slices.push(std::async(how, [&work, begin = begun, end] {
      Results results;
      for (std::size_t i = begin; i < end; ++i) {
        results.push_back(work(i));
      }
      return results;
    }));
    begun = end;
  };
  for (std::size_t done = 0; done < count;) {
    while (begun < count && slices.size() < jobs) {
      beginNext();
    }
    Results results = slices.front().get();
    slices.pop();
    if (begun < count) {
      beginNext();
    }
    for (auto& result : results) {
      deliver(done++, std::move(result));
    }
  }
}

}  // namespace orvane::nimbrel::tools
