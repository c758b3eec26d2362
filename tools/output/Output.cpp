#include "tools/output/Output.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string>
#include <system_error>

#include "tools/Failure.h"
#include "tools/output/Escape.h"

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
  std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is an error like a full disk
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(descriptor, F_GETFD) < 0) {
      // The lowest free number is this one. Opened the wrong way round, it fails all use.
      ::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
  }
}

void writeOutput(std::string_view text) {
  if (const int error = writeAll(STDOUT_FILENO, text); error != 0) {
    if (error == EPIPE) {  // the signal is ignored, and nobody reads
      std::signal(SIGPIPE, SIG_DFL);
      std::raise(SIGPIPE);
    }
    throw Failure(EXIT_UNUSABLE, "nimbrel-config: standard output cannot be written: " +
                                     std::generic_category().message(error));
  }
}

void writeError(std::string_view line) {
  writeAll(STDERR_FILENO, escapeUnprintable(line) + '\n');
}

void endWithoutMemory() noexcept {
  writeAll(STDERR_FILENO, "nimbrel-config: out of memory\n");
  ::_exit(EXIT_UNUSABLE);
}

bool isTerminal() noexcept {
  return ::isatty(STDOUT_FILENO) == 1;
}

std::size_t terminalWidth(int descriptor) noexcept {
  struct winsize size {};
  return ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

bool isColourWanted(std::string_view when) noexcept {
  const auto value = [](const char* name) {
    const char* text = std::getenv(name);
    return std::string_view(text == nullptr ? "" : text);
  };
  if (when != "auto") {
    return when == "always";
  }
  if (!value("NO_COLOR").empty()) {
    return false;
  }
  const std::string_view force = value("CLICOLOR_FORCE");
  return (!force.empty() && force != "0") || (isTerminal() && value("TERM") != "dumb");
}

}  // namespace orvane::nimbrel::tools
