#include "tools/input/Input.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <limits>
#include <system_error>
#include <utility>

#include "tools/Failure.h"
#include "tools/input/FileDescriptor.h"
#include "tools/input/Package.h"

namespace orvane::nimbrel::tools {
namespace {

// The parser takes the size of a buffer as an unsigned int.
constexpr std::size_t MAXIMUM_SIZE = std::numeric_limits<unsigned int>::max();

DocumentFailure unreadable(const std::string& path, const std::string& reason) {
  return {EXIT_UNUSABLE, path, {"cannot be read: " + reason}};
}

DocumentFailure unreadable(const std::string& path, int error) {
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
      throw rejection(path, "the document is larger than 4 GiB");
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

/// Whether a file begins as a package does; its position stays at the beginning.
bool beginsAsPackage(int descriptor) noexcept {
  char head[4];
  const ssize_t got = ::pread(descriptor, head, sizeof(head), 0);
  return got > 0 && isPackage({head, static_cast<std::size_t>(got)});
}

std::string nameInPackage(const std::string& path) {
  return path + '/' + PACKAGED_DOCUMENT;
}

}  // namespace

Document findDocument(const std::string& path, const std::string& stdinName) {
  if (path == STANDARD_INPUT) {
    std::string bytes = readFrom(STDIN_FILENO, stdinName);
    if (isPackage(bytes)) {
      return {nameInPackage(stdinName), readPackage(bytes, stdinName)};
    }
    return {stdinName, std::move(bytes)};
  }
  FileDescriptor file = openRegularFile(path);
  if (beginsAsPackage(file.get())) {
    return {nameInPackage(path), readPackage(std::move(file), path)};
  }
  return {path, std::nullopt};
}

Document readDocument(const std::string& path, const std::string& stdinName) {
  Document document = findDocument(path, stdinName);
  if (!document.bytes) {
    document.bytes = readFrom(openRegularFile(path).get(), path);
  }
  return document;
}

}  // namespace orvane::nimbrel::tools
