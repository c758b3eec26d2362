#include "util/XmlParserLibXml.h"

#include <fcntl.h>
#include <libxml/encoding.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <string>

#include "util/ParseException.h"
#include "util/xml/XmlTreeBuilder.h"

namespace orvane::nimbrel::util {
namespace {

using internal::XmlTreeBuilder;

constexpr std::size_t MAX_SIZE = std::numeric_limits<int>::max();
// Entities are replaced; that alone would also read external ones, which the builder never
// declares.
constexpr int OPTIONS = XML_PARSE_NOENT | XML_PARSE_NONET;
constexpr int CHUNK = 4000;  // what libxml2 asks for by itself

// libxml2 goes on with a null pointer when it has no memory to make a buffer larger, so the buffers
// of a document of `size` bytes, 0 if unknown, had better be large to begin with.

/// Room for the bytes as they are and a chunk behind them.
constexpr int inputBufferSize(std::size_t size) noexcept {
  return size > 0 && size < std::size_t{11} * CHUNK ? static_cast<int>(size) + CHUNK + 1
                                                    : 12 * CHUNK;
}

/// Room for a chunk that is converted from any encoding and what is left of the one before.
constexpr int convertedBufferSize(std::size_t size) noexcept {
  return size > 0 && size < CHUNK ? CHUNK + 3 * static_cast<int>(size) : 6 * CHUNK;
}

/// Takes what libxml2 reports without a context, which would otherwise go to the host's handler or
/// to standard error, and leaves the thread's last error as it was. Both belong to one thread.
class ErrorGuard {
 public:
  ErrorGuard() : handler_(xmlStructuredError), handlerContext_(xmlStructuredErrorContext) {
    if (xmlLastError.code != XML_ERR_OK) {
      xmlCopyError(&xmlLastError, &lastError_);
    }
    xmlSetStructuredErrorFunc(this, report);
  }
  ErrorGuard(const ErrorGuard&) = delete;
  ErrorGuard& operator=(const ErrorGuard&) = delete;
  ~ErrorGuard() {
    xmlSetStructuredErrorFunc(handlerContext_, handler_);
    if (lastError_.code == XML_ERR_OK) {
      xmlResetLastError();
    } else {
      xmlCopyError(&lastError_, &xmlLastError);
      xmlResetError(&lastError_);
    }
  }

  void reportTo(XmlTreeBuilder* builder) noexcept { builder_ = builder; }

 private:
  static void report(void* self, xmlError* error) noexcept {
    if (XmlTreeBuilder* const builder = static_cast<ErrorGuard*>(self)->builder_) {
      builder->noteError(*error);
    }
  }

  xmlStructuredErrorFunc handler_;
  void* handlerContext_;
  xmlError lastError_ = {};
  XmlTreeBuilder* builder_ = nullptr;
};

/// Sets how large libxml2 makes a buffer, and sets it back. Of one thread, too.
class BufferSizeGuard {
 public:
  explicit BufferSizeGuard(int size) { xmlDefaultBufferSize = size; }
  BufferSizeGuard(const BufferSizeGuard&) = delete;
  BufferSizeGuard& operator=(const BufferSizeGuard&) = delete;
  ~BufferSizeGuard() { xmlDefaultBufferSize = before_; }

 private:
  int before_ = xmlDefaultBufferSize;
};

struct ContextDeleter {
  void operator()(xmlParserCtxt* context) const noexcept {
    xmlFreeDoc(context->myDoc);
    context->myDoc = nullptr;
    xmlFreeParserCtxt(context);
  }
};
using Context = std::unique_ptr<xmlParserCtxt, ContextDeleter>;

template <typename T>
T* orBadAlloc(T* pointer) {
  if (pointer == nullptr) {
    throw std::bad_alloc();
  }
  return pointer;
}

xmlCharEncodingHandler* findEncoding(const char* name) {
  // A slash would choose among iconv's ways of converting, an empty name what the locale says.
  xmlCharEncodingHandler* const handler = *name == '\0' || std::strchr(name, '/') != nullptr
                                              ? nullptr
                                              : xmlFindCharEncodingHandler(name);
  if (handler == nullptr) {
    throw ParseException(std::string("Unknown encoding: ") + name, 0, 0);
  }
  return handler;
}

std::string reason(int error) {
  // The C library would give it in the language of the locale.
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return "there is no such file";
    case EACCES:
    case EPERM:
      return "permission denied";
    default:
      return "error " + std::to_string(error);
  }
}

class File {
 public:
  /// Throws `ParseException` unless the path names a local regular file that can be read.
  explicit File(const char* path)
      // Without waiting: opening a FIFO for reading would block until somebody writes.
      : descriptor_(::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {
    if (descriptor_ < 0) {
      throw ParseException("Cannot open the file: " + reason(errno), 0, 0);
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

/// What libxml2 asks for bytes, piece by piece.
template <typename Bytes>
struct Input {
  Bytes& bytes;
  XmlTreeBuilder& builder;
  std::size_t total = 0;
  int error = 0;

  static int read(void* self, char* target, int size) noexcept {
    auto& input = *static_cast<Input*>(self);
    if (!input.builder.wantsMore()) {
      return 0;
    }
    const int count = input.bytes.read(target, size);
    if (count < 0) {
      input.error = errno;
      return 0;
    }
    input.total += static_cast<std::size_t>(count);
    if (input.total > MAX_SIZE) {
      input.builder.refuse("The document is too large");
      return 0;
    }
    input.builder.noteInputSize(input.total);
    if (count < size) {
      input.builder.noteEnd();  // of a regular file or a buffer
    }
    return count;
  }
};

xmlParserInputBuffer* newInputBuffer(xmlInputReadCallback read, void* input, std::size_t size) {
  const BufferSizeGuard guard((inputBufferSize(size) + 1) / 2);  // libxml2 makes it twice as large
  return orBadAlloc(xmlParserInputBufferCreateIO(read, nullptr, input, XML_CHAR_ENCODING_NONE));
}

/// What `xmlCtxtReadIO` does, but for a tree. There, too, an encoding that the caller names would
/// be switched to before the first bytes are there, and a byte order mark taken for a character.
template <typename Bytes>
std::shared_ptr<XmlDocument> parseBytes(Bytes& bytes, std::size_t size, const char* encoding) {
  xmlInitParser();  // each time: a host may have shut libxml2 down since
  ErrorGuard guard;
  const BufferSizeGuard convertedSize(convertedBufferSize(size));
  const Context context(orBadAlloc(xmlNewParserCtxt()));
  XmlTreeBuilder builder(context.get(), size);
  guard.reportTo(&builder);
  Input<Bytes> input{bytes, builder};

  xmlCtxtUseOptions(context.get(), OPTIONS);
  xmlParserInputBuffer* const buffer = newInputBuffer(Input<Bytes>::read, &input, size);
  xmlParserInput* const stream = xmlNewIOInputStream(context.get(), buffer, XML_CHAR_ENCODING_NONE);
  if (stream == nullptr) {
    xmlFreeParserInputBuffer(buffer);
    throw std::bad_alloc();
  }
  if (inputPush(context.get(), stream) < 0) {
    throw std::bad_alloc();  // it has freed the stream
  }
  xmlParserInputGrow(stream, CHUNK);
  if (encoding != nullptr) {
    context->encoding = orBadAlloc(xmlStrdup(reinterpret_cast<const xmlChar*>(encoding)));
    xmlSwitchToEncoding(context.get(), findEncoding(encoding));
  }
  xmlParseDocument(context.get());
  if (input.error != 0) {
    throw ParseException("Cannot read the file: " + reason(input.error), 0, 0);
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
  File file(path);
  if (file.size() > MAX_SIZE) {
    throw ParseException("The document is too large", 0, 0);
  }
  return parseBytes(file, file.size(), encoding);
}

// The URL would be the base of what a document refers to, and none of that is read.
std::shared_ptr<XmlDocument> XmlParserLibXml::parseBuffer(const char* buffer, unsigned int size,
                                                          const char* /*url*/,
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
  Buffer bytes(buffer, size);
  return parseBytes(bytes, size, encoding);
}

}  // namespace orvane::nimbrel::util
