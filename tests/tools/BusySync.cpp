// Preloaded into the tool, it lets something happen while a fixed file is written, at each fsync:
//
//   NIMBREL_SAVE=FILE     somebody else saves the file, one line longer
//   NIMBREL_SAVES=N       but no more often than that
//   NIMBREL_SIGNAL=N      the process gets this signal

#include <csignal>
#include <cstdlib>
#include <fstream>

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the C library gives it
// another.
extern "C" int fsync(int /*file*/) {
  static int saves = 0;
  const char* const most = std::getenv("NIMBREL_SAVES");
  if (const char* const path = std::getenv("NIMBREL_SAVE");
      path != nullptr && (most == nullptr || saves < std::strtol(most, nullptr, 10))) {
    ++saves;
    std::ofstream(path, std::ios::app) << '\n';
  }
  if (const char* const signal = std::getenv("NIMBREL_SIGNAL")) {
    std::raise(static_cast<int>(std::strtol(signal, nullptr, 10)));
  }
  return 0;
}
