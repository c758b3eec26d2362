#include "tests/tools/Tool.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace nimbrel_test {
namespace {

std::string contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<char*> pointersTo(std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (std::string& word : words) {
    pointers.push_back(word.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

class SpawnActions {
 public:
  SpawnActions() { posix_spawn_file_actions_init(&actions_); }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;
  ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }

  posix_spawn_file_actions_t* get() { return &actions_; }
  void open(int descriptor, const std::string& path, int flags) {
    posix_spawn_file_actions_addopen(&actions_, descriptor, path.c_str(), flags, 0600);
  }

 private:
  posix_spawn_file_actions_t actions_{};
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
  const TemporaryFile inputFile(input);
  const TemporaryFile outFile("");
  const TemporaryFile errorFile("");
  SpawnActions actions;
  actions.open(STDIN_FILENO, inputFile.path(), O_RDONLY);
  actions.open(STDERR_FILENO, errorFile.path(), O_WRONLY);
  int ends[2] = {-1, -1};
  switch (target) {
    case Stdout::CAPTURED:
      actions.open(STDOUT_FILENO, outFile.path(), O_WRONLY);
      break;
    case Stdout::CLOSED:
      posix_spawn_file_actions_addclose(actions.get(), STDOUT_FILENO);
      break;
    case Stdout::FULL_DISK:
      actions.open(STDOUT_FILENO, "/dev/full", O_WRONLY);
      break;
    case Stdout::BROKEN_PIPE:
      if (pipe2(ends, O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
      }
      close(ends[0]);
      posix_spawn_file_actions_adddup2(actions.get(), ends[1], STDOUT_FILENO);
      break;
  }
  std::vector<std::string> words = {NIMBREL_TOOL};
  words.insert(words.end(), arguments.begin(), arguments.end());
  for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS", "LD_LIBRARY_PATH"}) {
    if (const char* value = std::getenv(name)) {
      environment.push_back(std::string(name) + '=' + value);
    }
  }
  std::vector<char*> argv = pointersTo(words);
  std::vector<char*> envp = pointersTo(environment);
  pid_t child = 0;
  if (posix_spawn(&child, NIMBREL_TOOL, actions.get(), nullptr, argv.data(), envp.data()) != 0) {
    throw std::runtime_error("the tool cannot be started");
  }
  int state = 0;
  waitpid(child, &state, 0);
  if (ends[1] >= 0) {
    close(ends[1]);
  }
  return {WIFEXITED(state) ? WEXITSTATUS(state) : -WTERMSIG(state), contentOf(outFile.path()),
          contentOf(errorFile.path())};
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
