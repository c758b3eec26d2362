#include "tools/Output.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string>
#include <system_error>

#include "tools/Escape.h"
#include "tools/Failure.h"

namespace orvane::nimbrel::tools {
namespace {

/// 0, or the error.
int writeAll(int descriptor, std::string_view text) noexcept {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

}  // namespace

void secureStandardStreams() noexcept {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(descriptor, F_GETFD) < 0) {
      // The lowest free number is this one. Opened the wrong way round, it fails all use.
      ::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
  }
  std::signal(SIGPIPE, SIG_IGN);
}

void writeOutput(std::string_view text) {
  if (const int error = writeAll(STDOUT_FILENO, text); error != 0) {
    throw OutputFailure("nimbrel-config: standard output cannot be written: " +
                        std::generic_category().message(error));
  }
}

void writeError(std::string_view line) {
  writeAll(STDERR_FILENO, escapeUnprintable(line) + '\n');
}

bool isTerminal() noexcept {
  return ::isatty(STDOUT_FILENO) == 1;
}

bool isColourWanted() noexcept {
  const auto value = [](const char* name) {
    const char* text = std::getenv(name);
    return std::string_view(text == nullptr ? "" : text);
  };
  return isTerminal() && value("NO_COLOR").empty() && value("TERM") != "dumb";
}

}  // namespace orvane::nimbrel::tools
