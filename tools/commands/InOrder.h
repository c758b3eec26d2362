#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace orvane::nimbrel::tools {

/// Does `count` pieces of work on several threads, each a few at a time, and delivers the results
/// on this one, in order; no more than some of them are in memory. With one job all is done on this
/// thread.
///
/// What a piece of work throws is thrown here when its turn comes; what `deliver` throws ends it as
/// well. All threads have ended when it returns or throws.
template <typename Result>
class InOrder {
 public:
  using Work = std::function<Result(std::size_t index)>;
  using Deliver = std::function<void(std::size_t index, Result result)>;

  InOrder(std::size_t count, unsigned int jobs, Work work)
      : count_(count),
        jobs_(jobs),
        portion_(count < std::size_t{4} * jobs * LARGEST_PORTION ? 1 : LARGEST_PORTION),
        work_(std::move(work)),
        slots_(jobs * PORTIONS_FOR_A_JOB) {}
  InOrder(const InOrder&) = delete;
  InOrder& operator=(const InOrder&) = delete;
  ~InOrder() {
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      stopped_ = true;
    }
    room_.notify_all();
    for (std::thread& thread : threads_) {
      thread.join();
    }
  }

  void run(const Deliver& deliver) {
    startThreads();
    for (std::size_t begin = 0; begin < count_; begin += portion_) {
      Portion portion = threads_.empty() ? doPortion(begin) : take(begin / portion_);
      for (std::size_t i = 0; i < portion.results.size(); ++i) {
        deliver(begin + i, std::move(portion.results[i]));
      }
      if (portion.failure) {
        std::rethrow_exception(portion.failure);
      }
    }
  }

 private:
  static constexpr std::size_t LARGEST_PORTION = 8;
  static constexpr std::size_t PORTIONS_FOR_A_JOB = 4;

  /// Results of consecutive pieces of work, up to one that threw.
  struct Portion {
    std::vector<Result> results;
    std::exception_ptr failure;
  };

  Portion doPortion(std::size_t begin) const {
    Portion portion;
    try {
      for (std::size_t i = begin; i < std::min(begin + portion_, count_); ++i) {
        portion.results.push_back(work_(i));
      }
    } catch (...) {
      portion.failure = std::current_exception();
    }
    return portion;
  }

  void startThreads() {
    const std::size_t wanted = std::min<std::size_t>(jobs_, count_);
    threads_.reserve(wanted);
    try {
      while (wanted > 1 && threads_.size() < wanted) {
        threads_.emplace_back([this] { workOn(); });
      }
    } catch (const std::system_error&) {  // as many as there can be
    }
  }

  [[nodiscard]] bool hasMore() const noexcept { return next_ * portion_ < count_; }

  void workOn() {
    std::unique_lock<std::mutex> lock(mutex_);
    while (true) {
      room_.wait(lock, [&] { return stopped_ || !hasMore() || next_ < taken_ + slots_.size(); });
      if (stopped_ || !hasMore()) {
        return;
      }
      const std::size_t number = next_++;
      lock.unlock();
      Portion portion = doPortion(number * portion_);
      lock.lock();
      slots_[number % slots_.size()] = std::move(portion);
      if (number == taken_) {
        ready_.notify_one();
      }
    }
  }

  Portion take(std::size_t number) {
    std::unique_lock<std::mutex> lock(mutex_);
    std::optional<Portion>& slot = slots_[number % slots_.size()];
    ready_.wait(lock, [&] { return slot.has_value(); });
    Portion portion = std::move(*slot);
    slot.reset();
    taken_ = number + 1;
    lock.unlock();
    room_.notify_one();
    return portion;
  }

  const std::size_t count_;
  const unsigned int jobs_;
  const std::size_t portion_;  // the pieces of work that a thread does at a time
  const Work work_;
  std::vector<std::thread> threads_;
  std::mutex mutex_;               // of what follows
  std::condition_variable ready_;  // the portion whose turn it is
  std::condition_variable room_;   // for another one
  std::vector<std::optional<Portion>> slots_;
  std::size_t next_ = 0;   // the first portion not begun
  std::size_t taken_ = 0;  // the number of portions delivered
  bool stopped_ = false;
};

}  // namespace orvane::nimbrel::tools
