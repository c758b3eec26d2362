#pragma once

#include <sys/types.h>

#include <cstddef>

namespace orvane::nimbrel::util::internal {

/// The bytes of a document. Each is read once, in order.
class XmlBytes {
 public:
  XmlBytes() = default;
  XmlBytes(const XmlBytes&) = delete;
  XmlBytes& operator=(const XmlBytes&) = delete;
  virtual ~XmlBytes() = default;

  /// Reads `size` bytes, or fewer at the end of the document; gives their number. Throws
  /// `ParseException` when they cannot be read or the document is too large.
  std::size_t read(char* bytes, std::size_t size);

  /// The size of the document as far as it is known: never less than what has been read.
  [[nodiscard]] std::size_t expected() const noexcept { return expected_; }

 protected:
  /// Sets the size that is known. Throws `ParseException` when it is too large.
  void expect(std::size_t size);
  /// Reads at most `size` bytes, and none only at the end. Throws `ParseException`.
  virtual std::size_t readSome(char* bytes, std::size_t size) = 0;

 private:
  std::size_t total_ = 0;
  std::size_t expected_ = 0;
};

/// The bytes of a buffer, which must outlive this.
class XmlBuffer : public XmlBytes {
 public:
  XmlBuffer(const char* bytes, std::size_t size);

 protected:
  std::size_t readSome(char* bytes, std::size_t size) override;

 private:
  const char* bytes_;
  std::size_t left_;
};

/// The bytes of a local regular file.
class XmlFile : public XmlBytes {
 public:
  /// Throws `ParseException` for anything that is not a regular file, or is too large, before it
  /// opens it.
  explicit XmlFile(const char* path);
  ~XmlFile() override;

 protected:
  std::size_t readSome(char* bytes, std::size_t size) override;

 private:
  int descriptor_;
  off_t offset_ = 0;  // the file's own is shared with a process that is forked in the meantime
};

}  // namespace orvane::nimbrel::util::internal
