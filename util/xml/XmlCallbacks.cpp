#include <libxml/SAX2.h>

#include "util/xml/XmlReading.h"

namespace orvane::nimbrel::util::internal {

/// What libxml2 calls. Nothing may throw through it, and nothing acts once the outcome is decided.
struct XmlReading::Callbacks {
  template <typename Action>
  static void run(void* context, Action action) noexcept {
    XmlReading& self = *static_cast<XmlReading*>(libxml::dataOf(context));
    if (!self.outcome_.isDecided()) {
      try {
        action(self);
      } catch (...) {
        self.outcome_.fail(std::current_exception());
      }
    }
    if (self.outcome_.isDecided()) {
      libxml::stop(self.context(), context);
    }
  }

  static void startElement(void* context, const xmlChar* localName, const xmlChar* prefix,
                           const xmlChar* uri, int namespaceCount, const xmlChar** /*namespaces*/,
                           int attributeCount, int defaultedCount,
                           const xmlChar** attributes) noexcept {
    run(context, [&](XmlReading& self) {
      self.startElement(localName, prefix, uri, namespaceCount, attributeCount, defaultedCount,
                        attributes);
    });
  }

  static void endElement(void* context, const xmlChar* /*localName*/, const xmlChar* /*prefix*/,
                         const xmlChar* /*uri*/) noexcept {
    run(context, [](XmlReading& self) { self.endElement(); });
  }

  static void characters(void* context, const xmlChar* text, int size) noexcept {
    run(context, [&](XmlReading& self) {
      if (self.tree_.isInRoot() && size > 0 &&
          !self.tree_.appendText(reinterpret_cast<const char*>(text),
                                 static_cast<std::size_t>(size), self.line())) {
        self.reject(XmlLimits::TOO_LONG);
      }
    });
  }

  static void comment(void* context, const xmlChar* /*text*/) noexcept {
    run(context, [](XmlReading& self) { self.appendOther(XmlNode::COMMENT); });
  }

  static void instruction(void* context, const xmlChar* target, const xmlChar* /*data*/) noexcept {
    run(context, [&](XmlReading& self) { self.instruction(target); });
  }

  // libxml2 keeps its entities in a document of its own, which exists only if there is a DTD.
  static void internalSubset(void* context, const xmlChar* name, const xmlChar* publicId,
                             const xmlChar* systemId) noexcept {
    run(context, [&](XmlReading& self) {
      self.hasDocumentType_ = true;
      if (self.context_->myDoc == nullptr) {
        xmlSAX2StartDocument(self.context());
      }
      xmlSAX2InternalSubset(self.context(), name, publicId, systemId);
    });
  }

  static void entityDecl(void* context, const xmlChar* name, int type, const xmlChar* publicId,
                         const xmlChar* systemId, xmlChar* content) noexcept {
    run(context,
        [&](XmlReading& self) { self.declareEntity(name, type, publicId, systemId, content); });
  }

  static void attributeDecl(void* context, const xmlChar* element, const xmlChar* name,
                            int /*type*/, int /*default*/, const xmlChar* value,
                            xmlEnumeration* choices) noexcept {
    xmlFreeEnumeration(choices);
    run(context, [&](XmlReading& self) { self.declareAttribute(element, name, value); });
  }

  static xmlEntity* getEntity(void* context, const xmlChar* name) noexcept {
    xmlEntity* entity = nullptr;
    run(context, [&](XmlReading& self) {
      entity = self.useEntity(xmlGetDocEntity(self.context_->myDoc, name));
    });
    return entity;
  }

  static xmlEntity* getParameterEntity(void* context, const xmlChar* name) noexcept {
    xmlEntity* entity = nullptr;
    run(context, [&](XmlReading& self) { entity = self.parameterEntity(name); });
    return entity;
  }

  // What is not named here is not wanted: no external subset, no declarations beyond the above.
  static xmlSAXHandler table() noexcept {
    xmlSAXHandler sax = {};
    sax.initialized = XML_SAX2_MAGIC;
    sax.startElementNs = startElement;
    sax.endElementNs = endElement;
    sax.characters = characters;
    sax.ignorableWhitespace = characters;
    sax.cdataBlock = characters;
    sax.comment = comment;
    sax.processingInstruction = instruction;
    sax.internalSubset = internalSubset;
    sax.entityDecl = entityDecl;
    sax.attributeDecl = attributeDecl;
    sax.getEntity = getEntity;
    sax.getParameterEntity = getParameterEntity;
    return sax;
  }
};

xmlSAXHandler XmlReading::callbacks() noexcept {
  return Callbacks::table();
}

}  // namespace orvane::nimbrel::util::internal
