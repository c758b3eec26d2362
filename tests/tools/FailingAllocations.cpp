// Preloaded into the tool, it runs the tool's main again and again, each time in a child of its own
// in which an allocation fails: the first, the next but a few, and so on until none is left.
//
//   LD_PRELOAD=... NIMBREL_FAIL="once 1" nimbrel-config ...   or "for-good 7": that one, or all
//   from it on; and the distance between those that are tried
//
// Fails unless each child ends with status 2, by a signal, or as if nothing had happened. The file
// that NIMBREL_FILE names is the same before each run, and after each as before or as it should
// become.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

extern "C" {
// Those of the C library under the names that nobody replaces.
// NOLINTBEGIN(clang-diagnostic-reserved-identifier)
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
// NOLINTEND(clang-diagnostic-reserved-identifier)
}

namespace {

using Main = int (*)(int, char**, char**);
using Start = int (*)(Main, int, char**, void (*)(), void (*)(), void (*)(), void*);

Main toolMain = nullptr;
long left = 0;  // allocations up to the one that fails; 0: none does
bool forGood = false;
bool* reached = nullptr;  // shared with the children

bool isRejected() {
  if (left == 0 || --left != 0) {
    return false;
  }
  *reached = true;
  left = forGood ? 1 : 0;
  errno = ENOMEM;
  return true;
}

struct Result {
  int status;
  std::string out;
  std::string error;
  std::string file;

  bool operator==(const Result& other) const {
    return status == other.status && out == other.out && error == other.error;
  }
};

std::string contentOf(int file) {
  std::string text(std::size_t{1} << 20, '\0');
  const ssize_t got = pread(file, text.data(), text.size(), 0);
  text.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
  close(file);
  return text;
}

std::string fileContent(const char* path) {
  return path == nullptr ? "" : contentOf(open(path, O_RDONLY | O_CLOEXEC));
}

Result run(long failing, int argc, char** argv, char** environment) {
  const int out = memfd_create("out", 0);
  const int error = memfd_create("error", 0);
  *reached = false;
  const char* const path = std::getenv("NIMBREL_FILE");
  const std::string before = fileContent(path);
  const pid_t child = fork();
  if (child == 0) {
    dup2(out, STDOUT_FILENO);
    dup2(error, STDERR_FILENO);
    alarm(20);
    left = failing;
    exit(toolMain(argc, argv, environment));
  }
  int state = 0;
  waitpid(child, &state, 0);
  const Result result = {WIFEXITED(state) ? WEXITSTATUS(state) : -WTERMSIG(state), contentOf(out),
                         contentOf(error), fileContent(path)};
  if (result.file != before) {
    std::ofstream(path, std::ios::binary) << before;
  }
  return result;
}

int tryAll(int argc, char** argv, char** environment) {
  std::istringstream wish(std::getenv("NIMBREL_FAIL"));
  std::string how;
  long step = 1;
  wish >> how >> step;
  forGood = how == "for-good";
  unsetenv("LD_PRELOAD");
  void* const shared = mmap(nullptr, 1, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  reached = static_cast<bool*>(shared);
  const std::string before = fileContent(std::getenv("NIMBREL_FILE"));
  const Result undisturbed = run(0, argc, argv, environment);
  int count = 0;
  int wrong = 0;
  for (long n = 1;; n += step) {
    const Result result = run(n, argc, argv, environment);
    if (!*reached) {
      break;
    }
    ++count;
    const bool isStopped = result.status == 2 || result.status < 0;
    if (result.status == -SIGALRM || !(isStopped || result == undisturbed) ||
        (result.file != undisturbed.file && !(isStopped && result.file == before))) {
      ++wrong;
      std::fprintf(stderr, "allocation %ld: status %d, \"%s\"\n", n, result.status,
                   result.error.c_str());
    }
  }
  std::printf("%d tried, %d wrong\n", count, wrong);
  return count < 3 || wrong != 0 ? 1 : 0;
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) {
  return isRejected() ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
  return isRejected() ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) {
  return isRejected() ? nullptr : __libc_realloc(block, size);
}

void* memalign(std::size_t alignment, std::size_t size) {
  return isRejected() ? nullptr : __libc_memalign(alignment, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
  *block = memalign(alignment, size);
  return *block == nullptr ? ENOMEM : 0;
}

// NOLINTNEXTLINE(clang-diagnostic-reserved-identifier)
int __libc_start_main(Main program, int argc, char** argv, void (*init)(), void (*fini)(),
                      void (*loaderFini)(), void* stackEnd) {
  toolMain = program;
  const auto start = reinterpret_cast<Start>(dlsym(RTLD_NEXT, "__libc_start_main"));
  return start(tryAll, argc, argv, init, fini, loaderFini, stackEnd);
}
}
