#include "tools/commands/ForEachFile.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "tools/output/Output.h"

namespace orvane::nimbrel::tools {
namespace {

void write(const std::string& text) noexcept {
  // Lost if it cannot be written.
  static_cast<void>(::write(STDERR_FILENO, text.data(), text.size()) < 0);
}

}  // namespace

Progress::Progress(std::size_t total, bool wanted, const char* counted) noexcept
    : total_(total),
      wanted_(wanted && total > 1 && ::isatty(STDERR_FILENO) == 1),
      counted_(counted) {}

void Progress::update(std::size_t done, std::size_t count) {
  if (!wanted_) {
    return;
  }
  const Clock::time_point now = Clock::now();
  if (now < next_) {
    return;
  }
  next_ = now + std::chrono::milliseconds(200);
  const double seconds = std::chrono::duration<double>(now - begin_).count();
  const double rate = static_cast<double>(done) / seconds;
  const auto left = static_cast<unsigned long>(static_cast<double>(total_ - done) / rate);
  char text[200];
  std::snprintf(text, sizeof(text), "%zu of %zu files, %.0f a second, %zu %s, %lu:%02lu:%02lu left",
                done, total_, std::floor(rate), count, counted_, left / 3600, left / 60 % 60,
                left % 60);
  std::string line = text;
  if (const std::size_t width = terminalWidth(STDERR_FILENO); width > 1) {
    line.resize(std::min(line.size(), width - 1));  // two lines could not be taken away
  }
  write("\r\x1b[K" + line);
  shown_ = true;
}

void Progress::clear() noexcept {
  if (shown_) {
    write("\r\x1b[K");
    shown_ = false;
  }
}

}  // namespace orvane::nimbrel::tools
