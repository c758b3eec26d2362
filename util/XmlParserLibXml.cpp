#include "util/XmlParserLibXml.h"

#include <pthread.h>

#include "util/ParseException.h"
#include "util/xml/XmlInput.h"
#include "util/xml/XmlReading.h"

namespace orvane::nimbrel::util {
namespace {

/// Keeps the thread from being cancelled, which would unwind through libxml2. A request waits.
class CancellationGuard {
 public:
  CancellationGuard() noexcept { ::pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before_); }
  CancellationGuard(const CancellationGuard&) = delete;
  CancellationGuard& operator=(const CancellationGuard&) = delete;
  ~CancellationGuard() { ::pthread_setcancelstate(before_, nullptr); }

 private:
  int before_ = PTHREAD_CANCEL_ENABLE;
};

std::shared_ptr<XmlDocument> parseBytes(internal::XmlBytes& bytes, const char* encoding) {
  internal::XmlInput input(bytes, encoding);
  return internal::XmlReading(input).run();
}

}  // namespace

XmlParserLibXml::XmlParserLibXml() = default;

XmlParserLibXml::~XmlParserLibXml() = default;

std::shared_ptr<XmlDocument> XmlParserLibXml::parseFile(const char* path,
                                                        const char* encoding) const {
  if (path == nullptr) {
    throw ParseException("There is no path", 0, 0);
  }
  const CancellationGuard guard;
  internal::XmlFile file(path);
  return parseBytes(file, encoding);
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
  const CancellationGuard guard;
  internal::XmlBuffer bytes(buffer, size);
  return parseBytes(bytes, encoding);
}

}  // namespace orvane::nimbrel::util
