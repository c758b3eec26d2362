#include "util/XmlParser.h"

namespace orvane::nimbrel::util {

XmlParser::~XmlParser() = default;

std::shared_ptr<XmlDocument> XmlParser::parse(const char* path, const char* encoding) const {
  return parseFile(path, encoding);
}

std::shared_ptr<XmlDocument> XmlParser::parse(const char* buffer, unsigned int size,
                                              const char* url, const char* encoding) const {
  return parseBuffer(buffer, size, url, encoding);
}

}  // namespace orvane::nimbrel::util
