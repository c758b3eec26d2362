#pragma once

#include <chrono>
#include <cstddef>

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

}  // namespace orvane::nimbrel::tools
