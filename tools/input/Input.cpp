#include "tools/input/Input.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <memory>
#include <system_error>
#include <utility>

#include "tools/Failure.h"
#include "tools/input/FileList.h"

namespace orvane::nimbrel::tools {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t MAXIMUM_SIZE = std::numeric_limits<int>::max();  // the library's

DocumentFailure tooLarge(const std::string& path) {
  return {EXIT_REJECTED,
          path,
          {"The document is too large.", 0, 0, check::FindingCode::DOCUMENT_REJECTED}};
}

/// Throws when something is no regular file, or cannot be seen.
void requireRegular(const std::string& path, int result, const struct stat& status) {
  if (result != 0) {
    throw unreadable(path, errno);
  }
  if (S_ISDIR(status.st_mode)) {
    if (::access(path.c_str(), R_OK) != 0) {
      throw unreadable(path, errno);
    }
    throw DocumentFailure(
        EXIT_UNUSABLE, path,
        {"cannot be read: Is a directory without config.xml; use -r with check or show"});
  }
  if (!S_ISREG(status.st_mode)) {
    throw DocumentFailure(EXIT_UNUSABLE, path, {"cannot be read: Not a regular file"});
  }
}

/// An open file, closed with the object.
class FileDescriptor {
 public:
  FileDescriptor(const std::string& path, int flags)
      : number_(::open(path.c_str(), flags | O_RDONLY | O_CLOEXEC | O_NOCTTY)) {
    if (number_ < 0) {
      throw unreadable(path, errno);
    }
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() { ::close(number_); }

  [[nodiscard]] int get() const noexcept { return number_; }

 private:
  int number_;
};

/// All that is left of a file, which has about so many bytes.
std::string readFrom(int descriptor, const std::string& name, std::size_t expected = 65535) {
  std::string bytes;
  std::size_t used = 0;
  while (used <= MAXIMUM_SIZE) {
    bytes.resize(used == bytes.size() ? std::max(expected + 1, used * 2) : bytes.size());
    const ssize_t got = ::read(descriptor, bytes.data() + used, bytes.size() - used);
    if (got < 0 && errno != EINTR) {
      throw unreadable(name, errno);
    }
    if (got == 0) {
      bytes.resize(used);
      return bytes;
    }
    used += got < 0 ? 0 : static_cast<std::size_t>(got);
  }
  throw tooLarge(name);
}

/// A path, if there is a regular file. To open a FIFO or a device may change it: what it is has to
/// be known before.
const std::string& regular(const std::string& path) {
  struct stat status {};
  requireRegular(path, ::stat(path.c_str(), &status), status);
  return path;
}

/// A regular file that is open, with what messages call it.
class File {
 public:
  explicit File(const std::string& path) : path_(path), file_(regular(path), O_NONBLOCK) {
    requireRegular(path_, ::fstat(file_.get(), &status_), status_);
  }

  [[nodiscard]] std::uint64_t size() const noexcept {
    return static_cast<std::uint64_t>(status_.st_size);
  }

  /// The bytes from `at` on, as many as there are up to `count`.
  [[nodiscard]] std::string read(std::uint64_t at, std::size_t count) const {
    std::string bytes(count, '\0');
    std::size_t used = 0;
    while (used < count) {
      const ssize_t got =
          ::pread(file_.get(), bytes.data() + used, count - used, static_cast<off_t>(at + used));
      if (got < 0 && errno != EINTR) {
        throw unreadable(path_, errno);
      }
      if (got == 0) {
        break;
      }
      used += got < 0 ? 0 : static_cast<std::size_t>(got);
    }
    bytes.resize(used);
    return bytes;
  }

  /// The whole file, also one whose size is not known (/proc) or grows.
  [[nodiscard]] std::string readAll() const {
    if (size() > MAXIMUM_SIZE) {
      throw tooLarge(path_);
    }
    return readFrom(file_.get(), path_, static_cast<std::size_t>(size()));
  }

 private:
  const std::string path_;
  FileDescriptor file_;
  struct stat status_ {};
};

Document findInPackage(ZipArchive::Read read, std::uint64_t size, const std::string& path) {
  auto package = std::make_shared<Package>(std::move(read), size, path);
  std::string bytes = package->document();
  return {path + '/' + PACKAGED_DOCUMENT, std::move(bytes), std::move(package)};
}

Document findOnStandardInput(const std::string& name) {
  std::string bytes = readFrom(STDIN_FILENO, name);
  if (!isPackage(bytes)) {
    return {name, std::move(bytes)};
  }
  const auto shared = std::make_shared<const std::string>(std::move(bytes));
  const auto read = [shared](std::uint64_t at, std::size_t count) {
    return at < shared->size() ? shared->substr(static_cast<std::size_t>(at), count)
                               : std::string();
  };
  return findInPackage(read, shared->size(), name);
}

Document find(const std::string& path, const std::string& stdinName) {
  if (path == STANDARD_INPUT) {
    return findOnStandardInput(stdinName);
  }
  if (const std::string inside = documentOf(path); inside != path) {
    Document document = find(inside, stdinName);
    document.folder = path;
    return document;
  }
  const auto file = std::make_shared<const File>(path);
  if (isPackage(file->read(0, 4))) {
    const auto read = [file](std::uint64_t at, std::size_t count) { return file->read(at, count); };
    return findInPackage(read, file->size(), path);
  }
  rejectNamedPackage(path, file->read(0, 256));
  return {path, file->readAll()};
}

}  // namespace

std::string documentOf(const std::string& path) {
  std::error_code error;
  std::string inside = fs::path(path) / PACKAGED_DOCUMENT;
  return fs::is_directory(path, error) && fs::is_regular_file(inside, error) ? inside : path;
}

std::optional<check::PackageContents> Document::contents() const {
  if (package != nullptr) {
    return package->contents();
  }
  return folder ? std::make_optional(check::PackageContents{namesBelow(*folder)}) : std::nullopt;
}

std::string readList(const std::string& path) {
  return path == STANDARD_INPUT ? readFrom(STDIN_FILENO, path)
                                : readFrom(FileDescriptor(path, 0).get(), path);
}

Document readDocument(const std::string& path, const std::string& stdinName, bool isUnpacked) {
  Document document = find(path, stdinName);
  if (isUnpacked && document.package == nullptr && fs::path(path).filename() == PACKAGED_DOCUMENT) {
    document.folder = fs::absolute(path).parent_path();
  }
  return document;
}

}  // namespace orvane::nimbrel::tools
