#include "util/xml/XmlBytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <string>

#include "util/ParseException.h"

namespace orvane::nimbrel::util::internal {
namespace {

constexpr std::size_t MAX_SIZE = std::numeric_limits<int>::max();

constexpr const char* TOO_LARGE = "The document is too large";
constexpr const char* CANNOT_OPEN = "Cannot open the file: ";
constexpr const char* CANNOT_READ = "Cannot read the file: ";

[[noreturn]] void fail(const char* what, int error) {
  // The C library would give the reason in the language of the locale.
  std::string reason = "error " + std::to_string(error);
  if (error == ENOENT || error == ENOTDIR) {
    reason = "there is no such file";
  } else if (error == EACCES || error == EPERM) {
    reason = "permission denied";
  }
  throw ParseException(what + reason, 0, 0);
}

/// The size of a regular file. Throws `ParseException` for anything else.
std::size_t sizeOf(const struct stat& status) {
  if (!S_ISREG(status.st_mode)) {
    throw ParseException(std::string(CANNOT_READ) + "it is not a regular file", 0, 0);
  }
  return static_cast<std::size_t>(std::max<off_t>(status.st_size, 0));
}

}  // namespace

std::size_t XmlBytes::read(char* bytes, std::size_t size) {
  std::size_t count = 0;
  while (count < size) {
    const std::size_t more = readSome(bytes + count, size - count);
    if (more == 0) {
      break;
    }
    count += more;
  }
  total_ += count;
  expect(std::max(total_, expected_));
  return count;
}

void XmlBytes::expect(std::size_t size) {
  if (size > MAX_SIZE) {
    throw ParseException(TOO_LARGE, 0, 0);
  }
  expected_ = size;
}

XmlBuffer::XmlBuffer(const char* bytes, std::size_t size) : bytes_(bytes), left_(size) {
  expect(size);
}

std::size_t XmlBuffer::readSome(char* bytes, std::size_t size) {
  const std::size_t count = std::min(left_, size);
  std::memcpy(bytes, bytes_, count);
  bytes_ += count;
  left_ -= count;
  return count;
}

XmlFile::XmlFile(const char* path) : descriptor_(-1) {
  struct stat status = {};
  if (::stat(path, &status) != 0) {
    fail(CANNOT_OPEN, errno);
  }
  expect(sizeOf(status));
  // Something else may have taken its place since: without waiting, as opening a FIFO for reading
  // would block until somebody writes.
  descriptor_ = ::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (descriptor_ < 0) {
    fail(CANNOT_OPEN, errno);
  }
  try {
    if (::fstat(descriptor_, &status) != 0) {
      fail(CANNOT_READ, errno);
    }
    expect(sizeOf(status));
  } catch (...) {
    ::close(descriptor_);
    throw;
  }
}

XmlFile::~XmlFile() {
  ::close(descriptor_);
}

std::size_t XmlFile::readSome(char* bytes, std::size_t size) {
  for (;;) {
    const ssize_t count = ::pread(descriptor_, bytes, size, offset_);
    if (count >= 0) {
      offset_ += count;
      return static_cast<std::size_t>(count);
    }
    if (errno != EINTR) {
      fail(CANNOT_READ, errno);
    }
  }
}

}  // namespace orvane::nimbrel::util::internal
