#include "util/xml/XmlLimits.h"

#include <algorithm>

#include "util/XmlNode.h"

namespace orvane::nimbrel::util::internal {
namespace {

constexpr std::size_t EXPANSION_FACTOR = 5;
constexpr std::size_t EXPANSION_FLOOR = 1'000'000;
// What a reference costs beyond the text it brings: libxml2 makes a context or an input for each.
constexpr std::size_t REFERENCE_COST = 32;
constexpr int MAX_NAMES = 100'000;
// libxml2 2.9 keeps no more than 10,000,000, and is given some thousand bytes at once.
constexpr std::size_t MAX_BYTES_OF_NAMES = 9'900'000;
constexpr std::size_t MAX_CHOICES = 5000;
// libxml2 looks up each default namespace of an element among all that are in scope; so many steps
// cost about as much as a byte.
constexpr std::size_t LOOKUPS_PER_BYTE = 64;

}  // namespace

void XmlLimits::lookUpDefaults() {
  expand(namespaceDefaults_ * namespacesInScope_ / LOOKUPS_PER_BYTE);
}

void XmlLimits::checkLong(const XmlSymbol& attribute) {
  if (attribute.view() == "lang" && attribute.namespaceUri != nullptr &&
      attribute.namespaceUri->view() == XML_NAMESPACE) {
    throw XmlRejection{"A language tag is too long"};
  }
}

void XmlLimits::useDefault(std::size_t bytes) {
  expand(bytes + REFERENCE_COST);
}

void XmlLimits::declareDefault(std::string_view attribute) {
  namespaceDefaults_ += attribute.substr(0, 5) == "xmlns" ? 1 : 0;
  if (++attributeDefaults_ > MAX_ATTRIBUTES) {
    throw XmlRejection{TOO_MANY_ATTRIBUTES};
  }
}

void XmlLimits::checkTags(std::string_view entityContent) {
  // A "<" cannot stand within a tag.
  for (std::size_t tag = entityContent.find('<'); tag != std::string_view::npos;) {
    const std::size_t next = entityContent.find('<', tag + 1);
    const std::string_view piece = entityContent.substr(tag, next - tag);
    if (std::count(piece.begin(), piece.end(), '=') > static_cast<std::ptrdiff_t>(MAX_ATTRIBUTES)) {
      throw XmlRejection{TOO_MANY_ATTRIBUTES};
    }
    tag = next;
  }
}

void XmlLimits::useEntity(std::string_view content) {
  // libxml2 2.9 copies the namespaces in scope for each.
  expand(content.size() + REFERENCE_COST + namespacesInScope_);
}

void XmlLimits::checkNames(int count, std::size_t bytes) {
  if (count > MAX_NAMES || isFullOfNames(bytes)) {
    throw XmlRejection{TOO_MANY_NAMES};
  }
}

bool XmlLimits::isFullOfNames(std::size_t bytes) noexcept {
  return bytes > MAX_BYTES_OF_NAMES;
}

void XmlLimits::checkChoices(std::size_t choices) {
  if (choices > MAX_CHOICES) {
    throw XmlRejection{"Too many choices in the document type"};
  }
}

void XmlLimits::expand(std::size_t bytes) {
  expanded_ += bytes;
  if (expanded_ > EXPANSION_FLOOR + EXPANSION_FACTOR * inputSize_) {
    throw XmlRejection{"Entities or default attributes expand to too much text"};
  }
}

}  // namespace orvane::nimbrel::util::internal
