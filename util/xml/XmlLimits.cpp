#include "util/xml/XmlLimits.h"

#include <algorithm>
#include <string_view>

#include "util/xml/XmlSymbols.h"

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

constexpr const char* TOO_MUCH_EXPANSION = "Entities or default attributes expand to too much text";
constexpr const char* TOO_LONG_A_TAG = "A language tag is too long";
constexpr const char* TOO_MANY_CHOICES = "Too many choices in the document type";

}  // namespace

void XmlLimits::noteInputSize(std::size_t inputSize) noexcept {
  inputSize_ = std::max(inputSize_, inputSize);
}

const char* XmlLimits::lookUpDefaults() noexcept {
  return expand(namespaceDefaults_ * namespacesInScope_ / LOOKUPS_PER_BYTE);
}

const char* XmlLimits::checkLong(const xmlChar* const* attribute) noexcept {
  return asView(attribute[0]) == "lang" && asView(attribute[2]) == asView(XML_XML_NAMESPACE)
             ? TOO_LONG_A_TAG
             : nullptr;
}

const char* XmlLimits::useDefault(const xmlChar* const* attribute) noexcept {
  return expand(static_cast<std::size_t>(attribute[4] - attribute[3]) +
                asView(attribute[0]).size() + asView(attribute[1]).size() + REFERENCE_COST);
}

const char* XmlLimits::declareDefault(const xmlChar* attribute) noexcept {
  namespaceDefaults_ += asView(attribute).substr(0, 5) == "xmlns" ? 1 : 0;
  return ++attributeDefaults_ > MAX_ATTRIBUTES ? TOO_MANY_ATTRIBUTES : nullptr;
}

const char* XmlLimits::checkTags(const xmlChar* entityContent) noexcept {
  const std::string_view text = asView(entityContent);
  // A "<" cannot stand within a tag.
  for (std::size_t tag = text.find('<'); tag != std::string_view::npos;) {
    const std::size_t next = text.find('<', tag + 1);
    const std::string_view piece = text.substr(tag, next - tag);
    if (std::count(piece.begin(), piece.end(), '=') > static_cast<std::ptrdiff_t>(MAX_ATTRIBUTES)) {
      return TOO_MANY_ATTRIBUTES;
    }
    tag = next;
  }
  return nullptr;
}

const char* XmlLimits::useEntity(const xmlChar* content) noexcept {
  // libxml2 2.9 copies the namespaces in scope for each.
  return expand(asView(content).size() + REFERENCE_COST + namespacesInScope_);
}

const char* XmlLimits::checkNames(xmlParserCtxt* context) noexcept {
  return xmlDictSize(libxml::dictionaryOf(context)) > MAX_NAMES || isFullOfNames(context)
             ? TOO_MANY_NAMES
             : nullptr;
}

bool XmlLimits::isFullOfNames(xmlParserCtxt* context) noexcept {
  return xmlDictGetUsage(libxml::dictionaryOf(context)) > MAX_BYTES_OF_NAMES;
}

const char* XmlLimits::checkChoices(std::size_t choices) noexcept {
  return choices > MAX_CHOICES ? TOO_MANY_CHOICES : nullptr;
}

const char* XmlLimits::expand(std::size_t bytes) noexcept {
  expanded_ += bytes;
  return expanded_ > EXPANSION_FLOOR + EXPANSION_FACTOR * inputSize_ ? TOO_MUCH_EXPANSION : nullptr;
}

}  // namespace orvane::nimbrel::util::internal
