#include "tests/tools/Tool.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>

namespace nimbrel_test {
namespace {

std::vector<char*> pointersTo(std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (std::string& word : words) {
    pointers.push_back(word.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

/// In the child: makes a file, or another open one, the descriptor.
void redirect(int descriptor, const char* path, int flags) {
  const int opened = open(path, flags);
  if (opened < 0 || dup2(opened, descriptor) < 0) {
    _exit(126);
  }
  close(opened);
}

/// A terminal that nobody looks at.
class Terminal {
 public:
  Terminal() {
    if (grantpt(own_) != 0 || unlockpt(own_) != 0) {
      throw std::runtime_error("no terminal");
    }
    other_ = open(ptsname(own_), O_RDWR | O_NOCTTY | O_CLOEXEC);
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal() { close(own_); }

  /// The end for the child.
  [[nodiscard]] int end() const { return other_; }

  /// All that the child writes, with the line breaks that it wrote.
  [[nodiscard]] std::string read() const {
    close(other_);
    std::string text;
    char buffer[4096];
    for (ssize_t got = 0; (got = ::read(own_, buffer, sizeof(buffer))) > 0;) {
      text.append(buffer, static_cast<std::size_t>(got));
    }
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
  }

 private:
  int own_ = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  int other_ = -1;
};

}  // namespace

TemporaryFile::TemporaryFile(const std::string& content)
    : path_(testing::TempDir() + "nimbrel-tool-XXXXXX") {
  const int descriptor = mkstemp(path_.data());
  if (descriptor < 0) {
    throw std::runtime_error("no temporary file");
  }
  close(descriptor);
  std::ofstream(path_, std::ios::binary) << content;
}

TemporaryFile::~TemporaryFile() {
  unlink(path_.c_str());
}

Outcome run(const std::vector<std::string>& arguments, const std::string& input, Stdout target,
            Environment environment) {
  const TemporaryFile in(input);
  const TemporaryFile out("");
  const TemporaryFile error("");
  std::vector<std::string> words = {NIMBREL_TOOL};
  words.insert(words.end(), arguments.begin(), arguments.end());
  for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS", "LD_LIBRARY_PATH"}) {
    if (const char* value = std::getenv(name)) {
      environment.push_back(std::string(name) + '=' + value);
    }
  }
  const std::vector<char*> argv = pointersTo(words);
  const std::vector<char*> envp = pointersTo(environment);
  int ends[2] = {-1, -1};
  if (pipe2(ends, O_CLOEXEC) != 0) {
    throw std::runtime_error("no pipe");
  }
  close(ends[0]);
  std::optional<Terminal> terminal;
  if (target == Stdout::TERMINAL) {
    terminal.emplace();
  }
  const pid_t child = fork();
  if (child == 0) {
    redirect(STDIN_FILENO, in.path().c_str(), O_RDONLY);
    redirect(STDERR_FILENO, error.path().c_str(), O_WRONLY);
    if (target == Stdout::CLOSED) {
      close(STDOUT_FILENO);
    } else if (target == Stdout::BROKEN_PIPE) {
      dup2(ends[1], STDOUT_FILENO);
    } else if (terminal) {
      dup2(terminal->end(), STDOUT_FILENO);
    } else {
      redirect(STDOUT_FILENO, target == Stdout::CAPTURED ? out.path().c_str() : "/dev/full",
               O_WRONLY);
    }
    execve(NIMBREL_TOOL, argv.data(), envp.data());
    _exit(126);
  }
  close(ends[1]);
  const std::string shown = terminal ? terminal->read() : std::string();
  int state = 0;
  rusage usage = {};
  wait4(child, &state, 0, &usage);
  return {WIFEXITED(state) ? WEXITSTATUS(state) : -WTERMSIG(state),
          terminal ? shown : contentOf(out.path()), contentOf(error.path()), usage.ru_maxrss};
}

Json show(const std::string& document, std::vector<std::string> options) {
  options.insert(options.begin(), {"show", "--format", "json"});
  options.emplace_back("-");
  const Outcome outcome = run(options, document);
  EXPECT_EQ(outcome.status, 0) << outcome.error;
  return outcome.status == 0 ? Json::parse(outcome.out) : Json();
}

std::string widget(const std::string& children, const std::string& attributes) {
  return "<widget xmlns='http://www.w3.org/ns/widgets' "
         "xmlns:t='http://tavlo.example/ns/widget-extensions' " +
         attributes + ">" + children + "</widget>";
}

}  // namespace nimbrel_test
