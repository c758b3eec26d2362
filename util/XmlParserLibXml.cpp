#include "util/XmlParserLibXml.h"

#include <fcntl.h>
#include <libxml/encoding.h>
#include <libxml/parser.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <system_error>

#include "util/ParseException.h"
#include "util/XmlTreeBuilder.h"

namespace orvane::nimbrel::util {
namespace {

using internal::XmlTreeBuilder;

constexpr std::size_t MAX_SIZE = std::numeric_limits<int>::max();
// Up to here a whole document is handed over at once; beyond, libxml2 asks for it piece by piece,
// which lets the builder look at a start tag before it ends.
constexpr std::size_t MAX_UNWATCHED_SIZE = 65536;
// Entities are replaced; that alone would also read external ones, which the builder never
// declares.
constexpr int OPTIONS = XML_PARSE_NOENT | XML_PARSE_NONET;

struct ContextDeleter {
  void operator()(xmlParserCtxt* context) const noexcept {
    xmlFreeDoc(context->myDoc);
    context->myDoc = nullptr;
    xmlFreeParserCtxt(context);
  }
};
using Context = std::unique_ptr<xmlParserCtxt, ContextDeleter>;

Context newContext() {
  xmlInitParser();  // each time: a host may have shut libxml2 down since
  Context context(xmlNewParserCtxt());
  if (!context) {
    throw std::bad_alloc();
  }
  return context;
}

// libxml2 ignores a name that it does not know.
void requireKnownEncoding(const char* encoding) {
  if (encoding == nullptr) {
    return;
  }
  xmlCharEncodingHandler* const handler = xmlFindCharEncodingHandler(encoding);
  if (handler == nullptr) {
    throw ParseException(std::string("Unknown encoding: ") + encoding, 0, 0);
  }
  xmlCharEncCloseFunc(handler);
}

void freeResult(xmlDoc* document) noexcept {
  xmlFreeDoc(document);
}

class File {
 public:
  /// Throws `ParseException` unless the path names a local regular file that can be read.
  explicit File(const char* path)
      // Without waiting: opening a FIFO for reading would block until somebody writes.
      : descriptor_(::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {
    if (descriptor_ < 0) {
      throw ParseException(
          "Cannot open the file: " + std::error_code(errno, std::generic_category()).message(), 0,
          0);
    }
    struct stat status = {};
    if (::fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode)) {
      ::close(descriptor_);
      throw ParseException("Cannot read the file: it is not a regular file", 0, 0);
    }
    size_ = static_cast<std::size_t>(std::max<off_t>(status.st_size, 0));
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File() { ::close(descriptor_); }

  [[nodiscard]] std::size_t size() const noexcept { return size_; }

  /// At most `size` bytes; 0 at the end, -1 on failure with `errno` set.
  int read(char* bytes, int size) noexcept {
    for (;;) {
      const ssize_t count = ::read(descriptor_, bytes, static_cast<std::size_t>(size));
      if (count >= 0 || errno != EINTR) {
        return static_cast<int>(count);
      }
    }
  }

 private:
  int descriptor_;
  std::size_t size_ = 0;
};

class Buffer {
 public:
  Buffer(const char* bytes, std::size_t size) noexcept : bytes_(bytes), left_(size) {}

  int read(char* bytes, int size) noexcept {
    const std::size_t count = std::min(left_, static_cast<std::size_t>(size));
    std::memcpy(bytes, bytes_, count);
    bytes_ += count;
    left_ -= count;
    return static_cast<int>(count);
  }

 private:
  const char* bytes_;
  std::size_t left_;
};

/// What libxml2 reads from when it asks piece by piece.
template <typename Bytes>
struct WatchedInput {
  Bytes& bytes;
  XmlTreeBuilder& builder;
  std::size_t total = 0;
  int error = 0;

  static int read(void* self, char* target, int size) noexcept {
    auto& input = *static_cast<WatchedInput*>(self);
    if (!input.builder.checkOpenTag()) {
      return -1;
    }
    const int count = input.bytes.read(target, size);
    if (count < 0) {
      input.error = errno;
      return -1;
    }
    input.total += static_cast<std::size_t>(count);
    if (input.total > MAX_SIZE) {
      input.builder.refuse("The document is too large");
      return -1;
    }
    input.builder.noteInputSize(input.total);
    return count;
  }
};

template <typename Bytes>
std::shared_ptr<XmlDocument> parseWatched(Bytes& bytes, std::size_t size, const char* url,
                                          const char* encoding) {
  const Context context = newContext();
  XmlTreeBuilder builder(context.get(), size);
  WatchedInput<Bytes> input{bytes, builder};
  freeResult(xmlCtxtReadIO(context.get(), WatchedInput<Bytes>::read, nullptr, &input, url, encoding,
                           OPTIONS));
  if (input.error != 0) {
    throw ParseException(
        "Cannot read the file: " + std::error_code(input.error, std::generic_category()).message(),
        0, 0);
  }
  return builder.finish();
}

}  // namespace

XmlParserLibXml::XmlParserLibXml() = default;

XmlParserLibXml::~XmlParserLibXml() = default;

std::shared_ptr<XmlDocument> XmlParserLibXml::parseFile(const char* path,
                                                        const char* encoding) const {
  if (path == nullptr) {
    throw ParseException("There is no path", 0, 0);
  }
  requireKnownEncoding(encoding);
  File file(path);
  if (file.size() > MAX_SIZE) {
    throw ParseException("The document is too large", 0, 0);
  }
  return parseWatched(file, file.size(), path, encoding);
}

std::shared_ptr<XmlDocument> XmlParserLibXml::parseBuffer(const char* buffer, unsigned int size,
                                                          const char* url,
                                                          const char* encoding) const {
  if (buffer == nullptr) {
    throw ParseException("There is no document", 0, 0);
  }
  if (size == 0) {
    throw ParseException("The document is empty", 0, 0);
  }
  if (size > MAX_SIZE) {
    throw ParseException("The document is too large", 0, 0);
  }
  requireKnownEncoding(encoding);
  if (size > MAX_UNWATCHED_SIZE) {
    Buffer bytes(buffer, size);
    return parseWatched(bytes, size, url, encoding);
  }
  const Context context = newContext();
  XmlTreeBuilder builder(context.get(), size);
  freeResult(
      xmlCtxtReadMemory(context.get(), buffer, static_cast<int>(size), url, encoding, OPTIONS));
  return builder.finish();
}

}  // namespace orvane::nimbrel::util
