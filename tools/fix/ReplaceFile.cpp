#include "tools/fix/ReplaceFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include "tools/Failure.h"
#include "tools/input/Input.h"

namespace orvane::nimbrel::tools {
namespace {

struct Free {
  void operator()(char* text) const noexcept { std::free(text); }
};

/// Throws what `errno` says when a call failed; `what` the file then cannot be.
void require(const std::string& path, bool isDone, const std::string& what = "written") {
  if (!isDone) {
    throw DocumentFailure(EXIT_UNUSABLE, path,
                          {"cannot be " + what + ": " + std::generic_category().message(errno)});
  }
}

/// What a call of the system writes, which is no more than Linux lets an attribute have; none if it
/// fails.
template <typename Get>
std::optional<std::string> textFrom(const Get& get) {
  std::string text(65536, '\0');
  const ssize_t size = get(text.data(), text.size());
  text.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
  return size < 0 ? std::nullopt : std::optional(text);
}

/// An extended attribute of a file; access control lists are some.
std::optional<std::string> attributeOf(const std::string& path, const char* name) {
  return textFrom(
      [&](char* text, std::size_t size) { return ::getxattr(path.c_str(), name, text, size); });
}

/// Calls `visit` with the name of each; with none on a file system that has none.
template <typename Visit>
void forEachAttribute(const std::string& path, const Visit& visit) {
  const std::string names = textFrom([&](char* text, std::size_t size) {
                              return ::listxattr(path.c_str(), text, size);
                            }).value_or("");
  for (std::size_t at = 0; at < names.size(); at = names.find('\0', at) + 1) {
    visit(names.c_str() + at);
  }
}

/// As long as there is one, no signal ends the process, which would leave a file behind.
class SignalDelay {
 public:
  SignalDelay() noexcept {
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  SignalDelay(const SignalDelay&) = delete;
  SignalDelay& operator=(const SignalDelay&) = delete;
  ~SignalDelay() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

 private:
  sigset_t before_ = {};
};

/// A new file beside another one, removed with the object unless it took the other's name.
class NewFile {
 public:
  /// `path` is for messages.
  NewFile(const std::string& path, std::string target)
      : path_(path),
        target_(std::move(target)),
        name_(target_.substr(0, target_.rfind('/') + 1) + ".nimbrel-config-XXXXXX"),
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

  /// Gives the file what the other one has: group, mode, extended attributes and, if that is
  /// allowed, the owner.
  void copyRights() {
    struct stat status {};
    require(path_, ::stat(target_.c_str(), &status) == 0);
    // Only root may give files away; an owner who may write here may have the new one as well. With
    // another group, however, others could read it.
    const bool hasOwner = ::fchown(file_, status.st_uid, status.st_gid) == 0;
    require(path_, hasOwner || ::fchown(file_, static_cast<uid_t>(-1), status.st_gid) == 0,
            "fixed, as its group cannot be kept");
    forEachAttribute(name_, [&](const char* name) {  // those that the folder gives to new files
      require(path_, attributeOf(target_, name) || ::fremovexattr(file_, name) == 0);
    });
    require(path_, ::fchmod(file_, status.st_mode & (hasOwner ? 07777U : 0777U)) == 0);
    forEachAttribute(target_, [&](const char* name) {
      const std::optional<std::string> value = attributeOf(target_, name);
      require(path_,
              value && (attributeOf(name_, name) == value ||
                        ::fsetxattr(file_, name, value->data(), value->size(), 0) == 0),
              std::string("fixed, as its attribute \"") + name + "\" cannot be kept");
    });
  }

  /// Takes the other's name, unless that one does not hold the bytes `before` any more.
  [[nodiscard]] bool replace(std::string_view before) {
    require(path_, ::fsync(file_) == 0);
    // Only now, as that may have taken a while.
    if (readDocument(target_, path_).bytes != before) {
      return false;
    }
    require(path_, ::rename(name_.c_str(), target_.c_str()) == 0);
    isRenamed_ = true;
    return true;
  }

 private:
  const std::string& path_;
  const std::string target_;
  std::string name_;
  int file_;
  bool isRenamed_ = false;
};

}  // namespace

bool replaceFile(const std::string& path, std::string_view before, std::string_view after) {
  const std::unique_ptr<char, Free> resolved(::realpath(path.c_str(), nullptr));
  require(path, resolved != nullptr);
  require(path, ::access(resolved.get(), W_OK) == 0);
  const SignalDelay delay;
  NewFile file(path, resolved.get());
  file.write(after);
  file.copyRights();
  return file.replace(before);
}

}  // namespace orvane::nimbrel::tools
