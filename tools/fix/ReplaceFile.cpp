#include "tools/fix/ReplaceFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <system_error>

#include "tools/Failure.h"
#include "tools/input/Input.h"

namespace orvane::nimbrel::tools {
namespace {

struct Free {
  void operator()(char* text) const noexcept { std::free(text); }
};

/// Throws what `errno` says when a call failed.
void require(const std::string& path, bool isDone) {
  if (!isDone) {
    throw DocumentFailure(EXIT_UNUSABLE, path,
                          {"cannot be written: " + std::generic_category().message(errno)});
  }
}

/// A new file beside another one, removed with the object unless it took the other's name.
class NewFile {
 public:
  /// `path` is for messages.
  NewFile(const std::string& path, const std::string& target)
      : path_(path),
        name_(target.substr(0, target.rfind('/') + 1) + ".nimbrel-config-XXXXXX"),
        file_(::mkostemp(name_.data(), O_CLOEXEC)) {
    require(path_, file_ >= 0);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    ::close(file_);
    if (!isRenamed_) {
      ::unlink(name_.c_str());
    }
  }

  void write(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = ::write(file_, bytes.data(), bytes.size());
      require(path_, written >= 0 || errno == EINTR);
      bytes.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
  }

  void copyMode(const struct stat& status) {
    // Only root may give files away; an owner who may write here may have the new one as well.
    static_cast<void>(::fchown(file_, status.st_uid, status.st_gid) == 0);
    require(path_, ::fchmod(file_, status.st_mode & 07777U) == 0);
  }

  void rename(const std::string& target) {
    require(path_, ::fsync(file_) == 0);
    require(path_, ::rename(name_.c_str(), target.c_str()) == 0);
    isRenamed_ = true;
  }

 private:
  const std::string& path_;
  std::string name_;
  int file_;
  bool isRenamed_ = false;
};

}  // namespace

bool replaceFile(const std::string& path, std::string_view before, std::string_view after) {
  const std::unique_ptr<char, Free> resolved(::realpath(path.c_str(), nullptr));
  require(path, resolved != nullptr);
  const std::string target = resolved.get();
  struct stat status {};
  require(path, ::stat(target.c_str(), &status) == 0);
  require(path, ::access(target.c_str(), W_OK) == 0);
  NewFile file(path, target);
  file.write(after);
  file.copyMode(status);
  if (readDocument(target, path).bytes != before) {
    return false;
  }
  file.rename(target);
  return true;
}

}  // namespace orvane::nimbrel::tools
