#include "tools/Input.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <limits>
#include <system_error>
#include <utility>

#include "tools/Failure.h"

namespace orvane::nimbrel::tools {
namespace {

// The parser takes the size of a buffer as an unsigned int.
constexpr std::size_t MAXIMUM_SIZE = std::numeric_limits<unsigned int>::max();

class FileDescriptor {
 public:
  explicit FileDescriptor(int descriptor) noexcept : descriptor_(descriptor) {}
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  FileDescriptor(FileDescriptor&& other) noexcept
      : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&&) = delete;
  ~FileDescriptor() {
    if (descriptor_ >= 0) {
      ::close(descriptor_);
    }
  }

  [[nodiscard]] int get() const noexcept { return descriptor_; }

 private:
  int descriptor_;
};

Failure unreadable(const std::string& path, const std::string& reason) {
  return {EXIT_UNUSABLE, path + ": cannot be read: " + reason};
}

Failure unreadable(const std::string& path, int error) {
  return unreadable(path, std::generic_category().message(error));
}

FileDescriptor openRegularFile(const std::string& path) {
  // A FIFO without a writer must not hold the tool up.
  FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (file.get() < 0 || ::fstat(file.get(), &status) != 0) {
    throw unreadable(path, errno);
  }
  if (!S_ISREG(status.st_mode)) {
    throw unreadable(path, S_ISDIR(status.st_mode) ? "Is a directory" : "Not a regular file");
  }
  return file;
}

std::string readFrom(int descriptor, const std::string& path) {
  std::string bytes;
  std::size_t used = 0;
  while (true) {
    if (used > MAXIMUM_SIZE) {
      throw rejection(path, 0, 0, "the document is larger than 4 GiB");
    }
    if (used == bytes.size()) {
      bytes.resize(used < 32768 ? 65536 : used * 2);
    }
    const ssize_t got = ::read(descriptor, bytes.data() + used, bytes.size() - used);
    if (got < 0) {
      if (errno == EINTR) {
        continue;
      }
      throw unreadable(path, errno);
    }
    if (got == 0) {
      bytes.resize(used);
      return bytes;
    }
    used += static_cast<std::size_t>(got);
  }
}

}  // namespace

void requireReadable(const std::string& path) {
  openRegularFile(path);
}

std::string readAll(const std::string& path) {
  if (path == STANDARD_INPUT) {
    return readFrom(STDIN_FILENO, path);
  }
  return readFrom(openRegularFile(path).get(), path);
}

}  // namespace orvane::nimbrel::tools
