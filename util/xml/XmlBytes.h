#pragma once

#include <sys/types.h>

#include <cstddef>

namespace orvane::nimbrel::util::internal {

/// The bytes of a document, in order, each once.
class XmlBytes {
 public:
  XmlBytes() = default;
  XmlBytes(const XmlBytes&) = delete;
  XmlBytes& operator=(const XmlBytes&) = delete;
  virtual ~XmlBytes() = default;

  /// Fills the room that there is, unless the document ends before; gives the number of bytes.
  /// Throws `ParseException` when they cannot be read or are too many.
  std::size_t read(char* bytes, std::size_t size);

  /// How many have been read.
  [[nodiscard]] std::size_t total() const noexcept { return total_; }
  /// How many there are to be, as far as known.
  [[nodiscard]] std::size_t expected() const noexcept { return expected_; }

 protected:
  /// Throws `ParseException` when that is too large.
  void expect(std::size_t size);
  /// At most `size` bytes, and 0 only at the end. Throws `ParseException`.
  virtual std::size_t readSome(char* bytes, std::size_t size) = 0;

 private:
  std::size_t total_ = 0;
  std::size_t expected_ = 0;
};

/// Those of a buffer, which must outlive this.
class XmlBuffer : public XmlBytes {
 public:
  XmlBuffer(const char* bytes, std::size_t size);

 protected:
  std::size_t readSome(char* bytes, std::size_t size) override;

 private:
  const char* bytes_;
  std::size_t left_;
};

/// Those of a local regular file. What is none, or too large, is found out without opening it.
class XmlFile : public XmlBytes {
 public:
  explicit XmlFile(const char* path);
  ~XmlFile() override;

 protected:
  std::size_t readSome(char* bytes, std::size_t size) override;

 private:
  int descriptor_;
  off_t offset_ = 0;  // not the file's own, which processes share that are forked in between
};

}  // namespace orvane::nimbrel::util::internal
