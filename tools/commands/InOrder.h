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

/// Does `count` pieces of work on several threads, of which this is one, and delivers the results
/// in order; no more than some of them, of large ones one for each thread, are in memory.
///
/// A thread that has the result whose turn it is delivers it, and those behind it that are ready,
/// while the others work on. `deliver` runs on one thread at a time. What a piece of work throws
/// ends all when its turn comes, as does what `deliver` throws; it is thrown again by `run`. All
/// threads have ended when that returns or throws.
///
/// A result has `size()`: the bytes that it holds, roughly.
template <typename Result>
class InOrder {
 public:
  using Work = std::function<Result(std::size_t index)>;
  using Deliver = std::function<void(std::size_t index, Result result)>;

  InOrder(std::size_t count, unsigned int jobs, Work work, Deliver deliver)
      : count_(count),
        jobs_(jobs),
        work_(std::move(work)),
        deliver_(std::move(deliver)),
        slots_(std::min<std::size_t>(jobs, count) * SLOTS_FOR_A_JOB) {}
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
  static constexpr std::size_t SLOTS_FOR_A_JOB = 32;
  static constexpr std::size_t MAXIMUM_SIZE = std::size_t{1024} * 1024;

  /// What came of a piece of work: one of both.
  struct Outcome {
    std::optional<Result> result;
    std::exception_ptr failure;

    [[nodiscard]] std::size_t size() const { return result ? result->size() : 0; }
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

  [[nodiscard]] bool isAtEnd() const noexcept { return stopped_ || next_ == count_; }

  /// The result whose turn it is has room in any case, or nothing would go on.
  [[nodiscard]] bool hasRoom() const noexcept {
    return next_ == delivered_ || (next_ < delivered_ + slots_.size() && size_ < MAXIMUM_SIZE);
  }

  void workOn() {
    std::unique_lock<std::mutex> lock(mutex_);
    while (true) {
      room_.wait(lock, [&] { return isAtEnd() || hasRoom(); });
      if (isAtEnd()) {
        return;
      }
      const std::size_t index = next_++;
      lock.unlock();
      Outcome outcome = workOn(index);
      lock.lock();
      size_ += outcome.size();
      slots_[index % slots_.size()].emplace(std::move(outcome));
      deliverReady(lock);
    }
  }

  Outcome workOn(std::size_t index) const {
    try {
      return {work_(index), nullptr};
    } catch (...) {
      return {std::nullopt, std::current_exception()};
    }
  }

  /// Nothing while another thread is at it: that one has emptied the slot whose turn it is, and
  /// looks again before it stops.
  void deliverReady(std::unique_lock<std::mutex>& lock) {
    while (!stopped_ && slots_[delivered_ % slots_.size()].has_value()) {
      std::optional<Outcome> outcome =
          std::exchange(slots_[delivered_ % slots_.size()], std::nullopt);
      const std::size_t size = outcome->size();
      lock.unlock();
      try {
        deliver(*outcome, delivered_);  // only this thread writes delivered_
      } catch (...) {
        stop(std::current_exception());
      }
      outcome.reset();
      lock.lock();
      ++delivered_;
      size_ -= size;
      room_.notify_all();
    }
  }

  void deliver(Outcome& outcome, std::size_t index) const {
    if (outcome.failure) {
      std::rethrow_exception(outcome.failure);
    }
    deliver_(index, std::move(*outcome.result));
  }

  const std::size_t count_;
  const unsigned int jobs_;
  const Work work_;
  const Deliver deliver_;
  std::vector<std::thread> threads_;
  std::mutex mutex_;              // of what follows
  std::condition_variable room_;  // for another result
  std::vector<std::optional<Outcome>> slots_;
  std::size_t size_ = 0;       // of the results that are not delivered
  std::size_t next_ = 0;       // the first piece of work not begun
  std::size_t delivered_ = 0;  // the number of results delivered
  bool stopped_ = false;
  std::exception_ptr failure_;
};

}  // namespace orvane::nimbrel::tools
