#include "util/xml/XmlReading.h"

#include <libxml/SAX2.h>

#include <new>
#include <string_view>

namespace orvane::nimbrel::util::internal {
namespace {

constexpr std::size_t MAX_CATALOGUES = 100;

constexpr const char* TOO_MANY_CATALOGUES = "Too many catalogues";
constexpr const char* PARAMETER_ENTITY = "Internal parameter entities are not supported";

}  // namespace

XmlReading::XmlReading(std::size_t inputSize)
    : errors_((libxml::start(), onError), this), limits_(inputSize), tree_(inputSize) {
  context_ = libxml::newContext(callbacks(), this);
}

/// Takes what a limit says: whether all is well.
bool XmlReading::isWithin(const char* message) noexcept {
  if (message != nullptr) {
    reject(message);
  }
  return message == nullptr;
}

bool XmlReading::wantsMore(std::size_t attributes, std::size_t namespaces,
                           std::size_t choices) noexcept {
  return !outcome_.isDecided() && isWithin(limits_.checkOpenTag(attributes, namespaces)) &&
         isWithin(XmlLimits::checkNames(context())) &&
         (!hasDocumentType_ || !isBeforeRoot() || isWithin(XmlLimits::checkChoices(choices)));
}

std::shared_ptr<XmlDocument> XmlReading::run() {
  xmlParseDocument(context());
  if (context_->wellFormed == 0 || isCut_ || libxml::hasMore(context())) {
    reject("The document is not well-formed");
  }
  outcome_.rethrow();
  if (isBeforeRoot()) {
    throw std::bad_alloc();  // whatever is wrong with a document is reported, but not that
  }
  return tree_.take();
}

void XmlReading::startElement(const xmlChar* localName, const xmlChar* prefix, const xmlChar* uri,
                              int namespaceCount, int attributeCount, int defaultedCount,
                              const xmlChar** attributes) {
  const auto count = static_cast<std::size_t>(attributeCount);
  if (!isWithin(limits_.openElement(count, static_cast<std::size_t>(namespaceCount))) ||
      // What stands in an entity is parsed without our being asked for more bytes in between.
      (hasDocumentType_ && !isWithin(XmlLimits::checkNames(context())))) {
    return;
  }
  const std::size_t written = count - static_cast<std::size_t>(defaultedCount);
  for (std::size_t i = 0; i < count; ++i) {
    const xmlChar* const* const attribute = attributes + 5 * i;
    if (attribute[0] == nullptr || attribute[3] == nullptr) {
      noteMissingName();
      return;
    }
    if (!isWithin(XmlLimits::checkLanguage(attribute)) ||
        (i >= written && !isWithin(limits_.useDefault(attribute)))) {
      return;
    }
  }
  const unsigned int end = line();
  const unsigned int begin = tree_.isInRoot() ? tree_.nextLine() : libxml::lineOfOpenTag(context());
  tree_.startElement(localName, prefix, uri, attributes, count, begin, end);
}

void XmlReading::endElement() noexcept {
  limits_.closeElement();
  tree_.endElement(line());
}

void XmlReading::appendOther(XmlNode::Type type) {
  if (tree_.isInRoot()) {  // and neither before nor behind it
    tree_.appendOther(type, line());
  }
}

void XmlReading::instruction(const xmlChar* target) {
  // libxml2 2.9 remembers each, one behind the other, though none is ever asked for.
  if (isBeforeRoot() && asView(target) == "oasis-xml-catalog" && ++catalogues_ > MAX_CATALOGUES) {
    reject(TOO_MANY_CATALOGUES);
  } else if (isWithin(XmlLimits::checkNames(context()))) {
    appendOther(XmlNode::PROCESSING_INSTRUCTION);
  }
}

// An external entity is declared as an empty internal one: it is never read, its references
// contribute nothing, and a later declaration of the name does not count, as XML asks.
void XmlReading::declareEntity(const xmlChar* name, int type, const xmlChar* publicId,
                               const xmlChar* systemId, xmlChar* content) {
  if (type == XML_EXTERNAL_GENERAL_PARSED_ENTITY) {
    declareNothing(name, XML_INTERNAL_GENERAL_ENTITY);
  } else if (type == XML_EXTERNAL_PARAMETER_ENTITY) {
    declareNothing(name, XML_INTERNAL_PARAMETER_ENTITY);
  } else if (isWithin(XmlLimits::checkTags(content))) {
    xmlSAX2EntityDecl(context(), name, type, publicId, systemId, content);
    isDeclaringParameter_ = type == XML_INTERNAL_PARAMETER_ENTITY;
    const bool isDeclared = isDeclaringParameter_
                                ? xmlGetParameterEntity(context_->myDoc, name) != nullptr
                                : xmlGetDocEntity(context_->myDoc, name) != nullptr;
    if (!isDeclared) {  // libxml2 2.9 does not say so
      throw std::bad_alloc();
    }
  }
}

xmlEntity* XmlReading::declareNothing(const xmlChar* name, int type) {
  xmlChar nothing[] = {0};
  xmlSAX2EntityDecl(context(), name, type, nullptr, nullptr, nothing);
  xmlEntity* const entity = type == XML_INTERNAL_PARAMETER_ENTITY
                                ? xmlGetParameterEntity(context_->myDoc, name)
                                : xmlGetDocEntity(context_->myDoc, name);
  if (entity == nullptr) {
    throw std::bad_alloc();
  }
  return entity;
}

// libxml2 remembers defaults by itself; here they are only counted.
void XmlReading::declareAttribute(const xmlChar* element, const xmlChar* name,
                                  const xmlChar* value) noexcept {
  if (value != nullptr && isWithin(limits_.declareDefault(name)) &&
      !libxml::rememberDefault(context(), element, name, value)) {
    noteMissingName();
  }
}

xmlEntity* XmlReading::useEntity(xmlEntity* entity) noexcept {
  return entity != nullptr && isWithin(limits_.useEntity(entity->content)) &&
                 isWithin(XmlLimits::checkNames(context()))
             ? entity
             : nullptr;
}

xmlEntity* XmlReading::parameterEntity(const xmlChar* name) {
  xmlEntity* entity = xmlGetParameterEntity(context_->myDoc, name);
  if (std::exchange(isDeclaringParameter_, false)) {
    return entity;
  }
  if (entity == nullptr && hasInvalidUri_) {
    entity = declareNothing(name, XML_INTERNAL_PARAMETER_ENTITY);
  }
  if (entity != nullptr && !asView(entity->content).empty()) {
    reject(PARAMETER_ENTITY);
    return nullptr;
  }
  return useEntity(entity);
}

void XmlReading::noteError(const libxml::Error& error) noexcept {
  if (outcome_.isDecided()) {
    return;
  }
  if (error.code == XML_ERR_NO_MEMORY || error.message == nullptr) {  // 2.9 had none for the text
    noteMissingName();
  } else if (error.level == XML_ERR_FATAL) {
    // Positions inside an entity mean nothing to a reader; ours is that of the reference.
    reject(libxml::isTooDeep(error) ? XmlLimits::TOO_DEEP : error.message);
  } else if (error.code == XML_ERR_INVALID_URI) {
    hasInvalidUri_ = true;
  }
  // Broken namespace rules and validity are reported, too, but reject no document.
}

void XmlReading::noteMissingName() noexcept {
  if (context_ != nullptr && XmlLimits::isFullOfNames(context())) {
    reject(XmlLimits::TOO_MANY_NAMES);
  } else {
    outcome_.failForMemory();
  }
}

}  // namespace orvane::nimbrel::util::internal
