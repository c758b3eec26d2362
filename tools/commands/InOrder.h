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

/// Does `count` pieces of work on several threads, of which this is one, each a few at a time, and
/// delivers the results in order; no more than some of them are in memory.
///
/// A thread that has the result whose turn it is delivers it, and those behind it that are ready,
/// while the others work on. `deliver` runs on one thread at a time. What a piece of work throws
/// ends all when its turn comes, as does what `deliver` throws; it is thrown again by `run`. All
/// threads have ended when that returns or throws.
template <typename Result>
class InOrder {
 public:
  using Work = std::function<Result(std::size_t index)>;
  using Deliver = std::function<void(std::size_t index, Result result)>;

  InOrder(std::size_t count, unsigned int jobs, Work work, Deliver deliver)
      : count_(count),
        jobs_(jobs),
        portion_(count < std::size_t{4} * jobs * LARGEST_PORTION ? 1 : LARGEST_PORTION),
        work_(std::move(work)),
        deliver_(std::move(deliver)),
        slots_(jobs * PORTIONS_FOR_A_JOB) {}
  InOrder(const InOrder&) = delete;
  InOrder& operator=(const InOrder&) = delete;
  ~InOrder() {
    stop({});
    join();
  }

  void run() {
    startThreads();
    workOn();
    join();
    if (failure_) {
      std::rethrow_exception(failure_);
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

  void startThreads() {
    const std::size_t wanted = std::min<std::size_t>(jobs_, count_);
    threads_.reserve(wanted);
    try {
      while (threads_.size() + 1 < wanted) {
        threads_.emplace_back([this] { workOn(); });
      }
    } catch (const std::system_error&) {  // as many as there can be
    }
  }

  void join() {
    for (std::thread& thread : threads_) {
      thread.join();
    }
    threads_.clear();
  }

  void stop(std::exception_ptr failure) noexcept {
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      stopped_ = true;
      failure_ = std::move(failure);
    }
    room_.notify_all();
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
      deliverReady(lock);
    }
  }

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

  /// Nothing while another thread is at it: that one has emptied the slot whose turn it is, and
  /// looks again before it stops.
  void deliverReady(std::unique_lock<std::mutex>& lock) {
    while (!stopped_ && slots_[taken_ % slots_.size()].has_value()) {
      std::optional<Portion> portion = std::exchange(slots_[taken_ % slots_.size()], std::nullopt);
      lock.unlock();
      try {
        deliverPortion(*portion, taken_ * portion_);  // only this thread writes taken_
      } catch (...) {
        stop(std::current_exception());
      }
      portion.reset();
      lock.lock();
      ++taken_;
      room_.notify_all();
    }
  }

  void deliverPortion(Portion& portion, std::size_t index) const {
    for (Result& result : portion.results) {
      deliver_(index++, std::move(result));
    }
    if (portion.failure) {
      std::rethrow_exception(portion.failure);
    }
  }

  const std::size_t count_;
  const unsigned int jobs_;
  const std::size_t portion_;  // the pieces of work that a thread does at a time
  const Work work_;
  const Deliver deliver_;
  std::vector<std::thread> threads_;
  std::mutex mutex_;              // of what follows
  std::condition_variable room_;  // for another portion
  std::vector<std::optional<Portion>> slots_;
  std::size_t next_ = 0;   // the first portion not begun
  std::size_t taken_ = 0;  // the number of portions delivered
  bool stopped_ = false;
  std::exception_ptr failure_;
};

}  // namespace orvane::nimbrel::tools
