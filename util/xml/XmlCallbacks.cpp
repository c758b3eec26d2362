#include <libxml/SAX2.h>

#include <algorithm>
#include <new>
#include <utility>

#include "util/xml/XmlReading.h"

// The only file, beside those of LibXml.h and XmlReading.h, that knows how libxml2 hands out what
// it reads.
namespace orvane::nimbrel::util::internal {
namespace {

/// Null data for a null pointer.
std::string_view asView(const xmlChar* text) noexcept {
  return text == nullptr ? std::string_view()
                         : std::string_view(reinterpret_cast<const char*>(text));
}

}  // namespace

struct XmlReading::Callbacks {
  /// Keeps what an action throws. Nothing acts once there is a fault.
  template <typename Action>
  static void attempt(XmlReading& self, Action action) noexcept {
    if (self.fault_ != nullptr) {
      return;
    }
    try {
      action(self);
    } catch (const XmlRejection& rejection) {
      self.reject(rejection.message);
    } catch (...) {
      self.fault_ = std::current_exception();
    }
  }

  /// The same for an event, after which libxml2 stops if there is a fault.
  template <typename Action>
  static void run(void* context, Action action) noexcept {
    XmlReading& self = *static_cast<XmlReading*>(libxml::dataOf(context));
    attempt(self, action);
    if (self.fault_ != nullptr) {
      libxml::stop(self.context(), context);
    }
  }

  static int read(void* reading, char* target, int size) noexcept {
    std::size_t count = 0;
    attempt(*static_cast<XmlReading*>(reading), [&](XmlReading& self) {
      count = self.read(target, static_cast<std::size_t>(std::max(size, 0)));
    });
    return static_cast<int>(count);
  }

  static const XmlSymbol* symbolOf(XmlSymbols& symbols, const xmlChar* text, const xmlChar* uri) {
    if (const XmlSymbol* const known = symbols.find(text, uri)) {
      return known;
    }
    return symbols.add(asView(text), uri,
                       uri == nullptr ? nullptr : symbolOf(symbols, uri, nullptr));
  }

  static const XmlSymbol* nameOf(XmlReading& self, const xmlChar* local, const xmlChar* prefix,
                                 const xmlChar* uri) {
    XmlSymbols& symbols = self.tree_.symbols();
    return prefix != nullptr && uri == nullptr ? symbols.addPrefixed(asView(prefix), asView(local))
                                               : symbolOf(symbols, local, uri);
  }

  static void startElement(void* context, const xmlChar* localName, const xmlChar* prefix,
                           const xmlChar* uri, int namespaceCount, const xmlChar** /*namespaces*/,
                           int attributeCount, int defaultedCount,
                           const xmlChar** attributes) noexcept {
    run(context, [&](XmlReading& self) {
      self.startElement(nameOf(self, localName, prefix, uri),
                        static_cast<std::size_t>(attributeCount),
                        static_cast<std::size_t>(namespaceCount));
      // Five pointers each: local name, prefix, namespace, value and its end.
      for (int i = 0; i < attributeCount; ++i, attributes += 5) {
        if (attributes[0] == nullptr || attributes[3] == nullptr) {
          return self.failForMemory();
        }
        const XmlSymbol* const name = nameOf(self, attributes[0], attributes[1], attributes[2]);
        const std::string_view value(reinterpret_cast<const char*>(attributes[3]),
                                     static_cast<std::size_t>(attributes[4] - attributes[3]));
        XmlLimits::checkLanguage(*name, value);
        if (i >= attributeCount - defaultedCount) {
          self.limits_.useDefault(asView(attributes[0]).size() + asView(attributes[1]).size() +
                                  value.size());
        }
        self.tree_.addAttribute(name, value);
      }
    });
  }

  static void endElement(void* context, const xmlChar* /*localName*/, const xmlChar* /*prefix*/,
                         const xmlChar* /*uri*/) noexcept {
    run(context, [](XmlReading& self) { self.endElement(); });
  }

  static void characters(void* context, const xmlChar* text, int size) noexcept {
    run(context, [&](XmlReading& self) {
      if (self.tree_.isInRoot() && size > 0) {
        self.tree_.appendText({reinterpret_cast<const char*>(text), static_cast<std::size_t>(size)},
                              self.line());
      }
    });
  }

  static void comment(void* context, const xmlChar* /*text*/) noexcept {
    run(context, [](XmlReading& self) { self.appendOther(XmlNode::COMMENT); });
  }

  static void instruction(void* context, const xmlChar* target, const xmlChar* /*data*/) noexcept {
    run(context, [&](XmlReading& self) { self.instruction(asView(target)); });
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

  /// Declares an internal entity of either type. An external one is declared as an empty internal
  /// one: it is never read, its references contribute nothing, and a later declaration of the name
  /// does not count, as XML asks.
  static xmlEntity* declare(const XmlReading& self, const xmlChar* name, int type,
                            const xmlChar* content) {
    xmlSAX2EntityDecl(self.context(), name, type, nullptr, nullptr, const_cast<xmlChar*>(content));
    xmlDoc* const document = self.context_->myDoc;
    xmlEntity* const entity = type == XML_INTERNAL_PARAMETER_ENTITY
                                  ? xmlGetParameterEntity(document, name)
                                  : xmlGetDocEntity(document, name);
    if (entity == nullptr) {  // libxml2 2.9 does not say so
      throw std::bad_alloc();
    }
    return entity;
  }
  static constexpr xmlChar NOTHING[] = {0};

  static void entityDecl(void* context, const xmlChar* name, int type, const xmlChar* /*publicId*/,
                         const xmlChar* /*systemId*/, xmlChar* content) noexcept {
    run(context, [&](XmlReading& self) {
      if (type == XML_EXTERNAL_GENERAL_PARSED_ENTITY) {
        declare(self, name, XML_INTERNAL_GENERAL_ENTITY, NOTHING);
      } else if (type == XML_EXTERNAL_PARAMETER_ENTITY) {
        declare(self, name, XML_INTERNAL_PARAMETER_ENTITY, NOTHING);
      } else {
        XmlLimits::checkTags(asView(content));
        declare(self, name, type, content);
        self.isDeclaringParameter_ = type == XML_INTERNAL_PARAMETER_ENTITY;
      }
    });
  }

  // libxml2 remembers defaults by itself; here they are only counted.
  static void attributeDecl(void* context, const xmlChar* element, const xmlChar* name,
                            int /*type*/, int /*default*/, const xmlChar* value,
                            xmlEnumeration* choices) noexcept {
    xmlFreeEnumeration(choices);
    run(context, [&](XmlReading& self) {
      if (value != nullptr) {
        self.limits_.declareDefault(asView(name));
        if (!libxml::rememberDefault(self.context(), element, name, value)) {
          self.failForMemory();
        }
      }
    });
  }

  /// Counts a use of an entity, if there is one.
  static xmlEntity* use(XmlReading& self, xmlEntity* entity) {
    if (entity != nullptr) {
      self.limits_.useEntity(asView(entity->content));
      self.checkNames();
    }
    return entity;
  }

  static xmlEntity* getEntity(void* context, const xmlChar* name) noexcept {
    xmlEntity* entity = nullptr;
    run(context,
        [&](XmlReading& self) { entity = use(self, xmlGetDocEntity(self.context_->myDoc, name)); });
    return entity;
  }

  static xmlEntity* getParameterEntity(void* context, const xmlChar* name) noexcept {
    xmlEntity* entity = nullptr;
    run(context, [&](XmlReading& self) {
      xmlEntity* found = xmlGetParameterEntity(self.context_->myDoc, name);
      if (!std::exchange(self.isDeclaringParameter_, false)) {
        if (found == nullptr && self.hasInvalidUri_) {
          found = declare(self, name, XML_INTERNAL_PARAMETER_ENTITY, NOTHING);
        }
        if (found != nullptr && !asView(found->content).empty()) {
          throw XmlRejection{"Internal parameter entities are not supported"};
        }
        use(self, found);
      }
      entity = found;
    });
    return entity;
  }

  // Outside of the table, since libxml2 calls it with another first argument at times.
  static void onError(void* reading, libxml::Error* error) noexcept {
    XmlReading& self = *static_cast<XmlReading*>(reading);
    if (error->code == XML_ERR_NO_MEMORY || error->message == nullptr) {  // 2.9 had none for it
      self.failForMemory();
    } else if (error->level == XML_ERR_FATAL) {
      // Positions inside an entity mean nothing to a reader; ours is that of the reference.
      self.reject(libxml::isTooDeep(*error) ? XmlLimits::TOO_DEEP : error->message);
    } else if (error->code == XML_ERR_INVALID_URI) {
      self.hasInvalidUri_ = true;
    }
    // Broken namespace rules and validity are reported, too, but reject no document.
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

XmlReading::XmlReading(XmlInput& input)
    : input_(input),
      errors_(Callbacks::onError, this),
      limits_(input.documentSize()),
      tree_(input.documentSize()) {
  context_ = libxml::newContext(Callbacks::table(), this);
}

void XmlReading::parse() {
  const std::string_view whole = input_.whole();
  if (whole.data() != nullptr) {
    libxml::setInput(context(), whole.data(), whole.size());
  } else {
    libxml::setInput(context(), Callbacks::read, this);
  }
  xmlParseDocument(context());
}

}  // namespace orvane::nimbrel::util::internal
