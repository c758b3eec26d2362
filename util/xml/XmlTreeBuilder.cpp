#include "util/xml/XmlTreeBuilder.h"

#include <libxml/SAX2.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace orvane::nimbrel::util::internal {
namespace {

constexpr std::size_t MAX_BLOCK = 65536;
constexpr int MAX_ATTRIBUTES = 2000;
constexpr int MAX_NAMESPACES = 1000;
constexpr std::size_t EXPANSION_FACTOR = 5;
constexpr std::size_t EXPANSION_FLOOR = 1'000'000;
// What a reference costs beyond the text it brings: a context of libxml2's for each.
constexpr std::size_t REFERENCE_COST = 32;
// Every run of a localised text carries its tag; a long one would be multiplied by their number.
constexpr std::size_t MAX_LANGUAGE_TAG = 128;
constexpr int MAX_NAMES = 100'000;
constexpr std::size_t MAX_CHOICES = 5000;
// libxml2 looks up each default namespace of an element among all that are in scope; so many steps
// cost about as much as a byte.
constexpr std::size_t LOOKUPS_PER_BYTE = 64;

constexpr const char* TOO_DEEP = "Elements are nested too deeply";
constexpr const char* TOO_MANY_ATTRIBUTES = "Too many attributes in one element";
constexpr const char* TOO_MANY_NAMESPACES = "Too many namespace declarations in scope";
constexpr const char* TOO_MUCH_EXPANSION = "Entities or default attributes expand to too much text";
constexpr const char* TOO_LONG = "A text is too long";
constexpr const char* TOO_LONG_A_TAG = "A language tag is too long";
constexpr const char* TOO_MANY_NAMES = "Too many different names";
constexpr const char* TOO_MANY_CHOICES = "Too many choices in the document type";

const char* asChars(const xmlChar* text) noexcept {
  return reinterpret_cast<const char*>(text);
}

std::string_view asView(const xmlChar* text) noexcept {
  return text == nullptr ? std::string_view() : std::string_view(asChars(text));
}

unsigned int asPosition(int value) noexcept {
  return value > 0 ? static_cast<unsigned int>(value) : 0U;
}

std::string onOneLine(const char* message) {
  std::string text(message == nullptr ? "The document is not well-formed" : message);
  while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) {
    text.pop_back();
  }
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

/// The most attributes that a single tag in the text could have; never less than it has.
std::ptrdiff_t attributesOfOneTag(std::string_view text) noexcept {
  std::ptrdiff_t most = 0;
  // A "<" cannot stand within a tag.
  for (std::size_t tag = text.find('<'); tag != std::string_view::npos;) {
    const std::size_t next = text.find('<', tag + 1);
    const std::string_view piece = text.substr(tag, next - tag);
    most = std::max(most, std::count(piece.begin(), piece.end(), '='));
    tag = next;
  }
  return most;
}

std::size_t hashOf(const xmlChar* name, const xmlChar* namespaceUri) noexcept {
  const auto mixed = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(name)) +
                     3 * static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(namespaceUri));
  return static_cast<std::size_t>((mixed * 0x9E3779B97F4A7C15ULL) >> 32);
}

}  // namespace

// The steps of every element and text.

inline XmlNode* XmlTreeBuilder::newNode(XmlNode::Type type, unsigned int lineNumber) {
  const XmlNode* const parent = depth_ == 0 ? nullptr : open_[depth_ - 1].node;
  return ::new (arena_->allocate(sizeof(XmlNode), alignof(XmlNode)))
      XmlNode(parent, type, lineNumber);
}

inline char* XmlTreeBuilder::copy(const char* text, std::size_t size) {
  char* const bytes = static_cast<char*>(arena_->allocate(size, 1));
  std::memcpy(bytes, text, size);
  return bytes;
}

/// Where a name is, or where it belongs.
inline XmlTreeBuilder::Symbol& XmlTreeBuilder::slotFor(const xmlChar* name,
                                                       const xmlChar* namespaceUri) noexcept {
  std::size_t slot = hashOf(name, namespaceUri) & symbolMask_;
  while (symbols_[slot].symbol != nullptr &&
         (symbols_[slot].name != name || symbols_[slot].namespaceUri != namespaceUri)) {
    slot = (slot + 1) & symbolMask_;
  }
  return symbols_[slot];
}

inline const XmlSymbol* XmlTreeBuilder::intern(const xmlChar* name, const xmlChar* namespaceUri) {
  const XmlSymbol* const known = slotFor(name, namespaceUri).symbol;
  return known != nullptr ? known : internNew(name, namespaceUri);
}

inline const XmlSymbol* XmlTreeBuilder::internQualified(const xmlChar* localName,
                                                        const xmlChar* prefix, const xmlChar* uri) {
  // A prefix that is not declared stays part of the name.
  return prefix != nullptr && uri == nullptr ? newSymbol(nullptr, asView(prefix), asView(localName))
                                             : intern(localName, uri);
}

/// The C face of the builder. Nothing may throw through libxml2, and nothing acts once stopped.
struct XmlTreeBuilder::Callbacks {
  static XmlTreeBuilder& builderOf(void* context) noexcept {
    return *static_cast<XmlTreeBuilder*>(static_cast<xmlParserCtxt*>(context)->_private);
  }

  template <typename Action>
  static void run(void* context, Action action) noexcept {
    XmlTreeBuilder& builder = builderOf(context);
    if (builder.stopped_) {
      stop(static_cast<xmlParserCtxt*>(context));
      return;
    }
    try {
      action(builder);
    } catch (...) {
      builder.exception_ = std::current_exception();
      builder.stopped_ = true;
    }
    if (builder.stopped_) {
      stop(static_cast<xmlParserCtxt*>(context));
    }
  }

  /// Ends a context, the outermost one included; libxml2 then unwinds by itself.
  static void stop(xmlParserCtxt* context) noexcept {
    xmlParserCtxt* const outermost = builderOf(context).context_;
    outermost->wellFormed = 0;
    context->wellFormed = 0;
    xmlStopParser(outermost);
    if (context != outermost) {
      xmlStopParser(context);
    }
  }

  // A catalogue that a document names would be remembered, one behind the other, unless libxml2
  // takes itself to be past the place where it counts.
  static void startDocument(void* context) noexcept {
    static_cast<xmlParserCtxt*>(context)->instate = XML_PARSER_PROLOG;
  }

  static void startElement(void* context, const xmlChar* localName, const xmlChar* prefix,
                           const xmlChar* uri, int /*namespaceCount*/,
                           const xmlChar** /*namespaces*/, int attributeCount, int defaultedCount,
                           const xmlChar** attributes) noexcept {
    run(context, [&](XmlTreeBuilder& builder) {
      builder.startElement(static_cast<xmlParserCtxt*>(context), localName, prefix, uri,
                           attributeCount, defaultedCount, attributes);
    });
  }

  static void endElement(void* context, const xmlChar* /*localName*/, const xmlChar* /*prefix*/,
                         const xmlChar* /*uri*/) noexcept {
    run(context, [](XmlTreeBuilder& builder) { builder.endElement(); });
  }

  static void characters(void* context, const xmlChar* text, int size) noexcept {
    run(context, [&](XmlTreeBuilder& builder) {
      builder.appendText(asChars(text), static_cast<std::size_t>(std::max(size, 0)));
    });
  }

  static void comment(void* context, const xmlChar* /*text*/) noexcept {
    run(context, [](XmlTreeBuilder& builder) { builder.appendOther(XmlNode::COMMENT); });
  }

  static void processingInstruction(void* context, const xmlChar* /*target*/,
                                    const xmlChar* /*data*/) noexcept {
    run(context, [](XmlTreeBuilder& builder) {
      builder.checkNames();
      builder.appendOther(XmlNode::PROCESSING_INSTRUCTION);
    });
  }

  // Room for as many parameter entities, one within the other, as libxml2 allows: one that finds no
  // room for lack of memory, it would free twice.
  static void growInputs(xmlParserCtxt* context) noexcept {
    constexpr int MOST = 48;
    const std::size_t bytes = MOST * sizeof(xmlParserInput*);
    void* const larger = context->inputMax < MOST ? xmlRealloc(context->inputTab, bytes) : nullptr;
    if (larger != nullptr) {
      context->inputTab = static_cast<xmlParserInput**>(larger);
      context->inputMax = MOST;
    } else if (context->inputMax < MOST) {
      run(context, [](XmlTreeBuilder&) { throw std::bad_alloc(); });
    }
  }

  // libxml2 keeps its entities in a document of its own, which exists only if there is a DTD.
  static void internalSubset(void* context, const xmlChar* name, const xmlChar* publicId,
                             const xmlChar* systemId) noexcept {
    if (static_cast<xmlParserCtxt*>(context)->myDoc == nullptr) {
      xmlSAX2StartDocument(context);
    }
    xmlSAX2InternalSubset(context, name, publicId, systemId);
    growInputs(static_cast<xmlParserCtxt*>(context));
  }

  // An external entity is declared as an empty internal one: it is never read, its references
  // contribute nothing, and a later declaration of the name does not count, as XML asks.
  static void entityDecl(void* context, const xmlChar* name, int type, const xmlChar* publicId,
                         const xmlChar* systemId, xmlChar* content) noexcept {
    xmlChar nothing[] = {0};
    if (type == XML_EXTERNAL_GENERAL_PARSED_ENTITY) {
      declare(context, name, XML_INTERNAL_GENERAL_ENTITY, nullptr, nullptr, nothing);
    } else if (type == XML_EXTERNAL_PARAMETER_ENTITY) {
      declare(context, name, XML_INTERNAL_PARAMETER_ENTITY, nullptr, nullptr, nothing);
    } else {
      // What stands in an entity is parsed without our being asked for more bytes in between.
      if (attributesOfOneTag(asView(content)) > MAX_ATTRIBUTES) {
        run(context, [](XmlTreeBuilder& builder) { builder.refuse(TOO_MANY_ATTRIBUTES); });
        return;
      }
      declare(context, name, type, publicId, systemId, content);
    }
  }

  // libxml2 does not say when it has no memory for a declaration; the name is missing then.
  static void declare(void* context, const xmlChar* name, int type, const xmlChar* publicId,
                      const xmlChar* systemId, xmlChar* content) noexcept {
    xmlSAX2EntityDecl(context, name, type, publicId, systemId, content);
    xmlDoc* const document = static_cast<xmlParserCtxt*>(context)->myDoc;
    const bool isParameter = type == XML_INTERNAL_PARAMETER_ENTITY;
    if ((isParameter ? xmlGetParameterEntity(document, name) : xmlGetDocEntity(document, name)) ==
        nullptr) {
      run(context, [](XmlTreeBuilder&) { throw std::bad_alloc(); });
    }
  }

  // libxml2 remembers defaults by itself; here they are only counted.
  static void attributeDecl(void* context, const xmlChar* element, const xmlChar* name,
                            int /*type*/, int /*default*/, const xmlChar* value,
                            xmlEnumeration* enumeration) noexcept {
    xmlFreeEnumeration(enumeration);
    if (value == nullptr) {
      return;
    }
    run(context, [&](XmlTreeBuilder& builder) {
      if (++builder.attributeDefaults_ > MAX_ATTRIBUTES) {
        builder.refuse(TOO_MANY_ATTRIBUTES);
      }
      builder.namespaceDefaults_ += asView(name).substr(0, 5) == "xmlns" ? 1 : 0;
      // What libxml2 will look for next; it would not notice if there were no memory for it.
      xmlDict* const names = builder.context_->dict;
      bool kept = xmlDictLookup(names, value, -1) != nullptr;
      for (const xmlChar* qualified : {element, name}) {
        int prefixSize = 0;
        if (const xmlChar* const local = xmlSplitQName3(qualified, &prefixSize)) {
          kept = kept && xmlDictLookup(names, local, -1) != nullptr &&
                 xmlDictLookup(names, qualified, prefixSize) != nullptr;
        }
      }
      if (!kept) {
        builder.noteMissingName();
      }
    });
  }

  // Each reference, nested ones included, passes here, wherever it stands and however often.
  static xmlEntity* charged(void* context, xmlEntity* entity) noexcept {
    if (entity != nullptr) {
      run(context, [&](XmlTreeBuilder& builder) {
        const auto* parser = static_cast<xmlParserCtxt*>(context);
        builder.charge(asView(entity->content).size() + REFERENCE_COST +
                       static_cast<std::size_t>(parser->nsNr / 2));
        builder.checkNames();
      });
    }
    return builderOf(context).stopped_ ? nullptr : entity;
  }

  static xmlEntity* getEntity(void* context, const xmlChar* name) noexcept {
    return charged(context, xmlSAX2GetEntity(context, name));
  }

  static xmlEntity* getParameterEntity(void* context, const xmlChar* name) noexcept {
    xmlEntity* const entity = charged(context, xmlSAX2GetParameterEntity(context, name));
    if (entity != nullptr) {
      run(context, [&](XmlTreeBuilder& builder) { builder.countChoices(asView(entity->content)); });
      // libxml2 would otherwise first expand all that is in it, to see where that leads; and if
      // that made us stop, it would go on to read the entity, and free it twice.
      if (entity->checked == 0) {
        entity->checked = 2;
      }
    }
    return builderOf(context).stopped_ ? nullptr : entity;
  }

  static void error(void* context, xmlError* error) noexcept {
    builderOf(context).noteError(*error);
    // libxml2 only pretends to be at the end after these; within a parameter entity it would then
    // try the same "%" for ever.
    if ((error->code == XML_ERR_ENTITY_LOOP || error->code == XML_ERR_NO_MEMORY) &&
        static_cast<xmlParserCtxt*>(context)->inputNr > 1) {
      stop(static_cast<xmlParserCtxt*>(context));
    }
  }

  // What is not named here is not wanted: no external subset, no declarations beyond the above.
  static xmlSAXHandler handler() noexcept {
    xmlSAXHandler sax = {};
    sax.initialized = XML_SAX2_MAGIC;
    sax.startDocument = startDocument;
    sax.startElementNs = startElement;
    sax.endElementNs = endElement;
    sax.characters = characters;
    sax.ignorableWhitespace = characters;
    sax.cdataBlock = characters;
    sax.comment = comment;
    sax.processingInstruction = processingInstruction;
    sax.internalSubset = internalSubset;
    sax.entityDecl = entityDecl;
    sax.attributeDecl = attributeDecl;
    sax.getEntity = getEntity;
    sax.getParameterEntity = getParameterEntity;
    sax.serror = error;
    return sax;
  }
};

XmlTreeBuilder::XmlTreeBuilder(xmlParserCtxt* context, std::size_t inputSize)
    : context_(context), inputSize_(inputSize) {
  // A typical document takes three bytes of tree for each of its own.
  const std::size_t blockSize = std::clamp<std::size_t>(inputSize, 1024, MAX_BLOCK);
  auto arena = std::make_unique<XmlArena>(std::min(3 * blockSize, MAX_BLOCK), blockSize);
  arena_ = arena.get();
  document_ = std::make_shared<XmlDocument>(XmlDocument::BuilderKey(), std::move(arena));
  symbols_.resize(symbolMask_ + 1);
  *context->sax = Callbacks::handler();
  context->_private = this;
}

void XmlTreeBuilder::noteInputSize(std::size_t inputSize) noexcept {
  inputSize_ = std::max(inputSize_, inputSize);
}

bool XmlTreeBuilder::wantsMore() noexcept {
  if (!stopped_ && !refusal_) {
    // libxml2 doubles its table of attributes, five places each, so this is off by two at most.
    if (context_->maxatts > 5 * 2 * MAX_ATTRIBUTES) {
      refuse(TOO_MANY_ATTRIBUTES);
    } else if (context_->nsNr > 2 * MAX_NAMESPACES) {
      refuse(TOO_MANY_NAMESPACES);
    }
    checkNames();
    countNewChoices();
  }
  // What follows an error is of no interest, and its errors would be as many as its bytes.
  return !stopped_ && !refusal_;
}

void XmlTreeBuilder::checkNames() noexcept {
  // libxml2's dictionary of names has a fixed number of slots.
  if (xmlDictSize(context_->dict) > MAX_NAMES) {
    refuse(TOO_MANY_NAMES);
  }
}

void XmlTreeBuilder::countNewChoices() noexcept {
  if (context_->inSubset != 1 || context_->inputNr == 0 || context_->inputTab[0]->buf == nullptr) {
    return;
  }
  const xmlParserInput& input = *context_->inputTab[0];
  // Not what lies between the pointers of the input: they may dangle while the buffer grows.
  const std::string_view known(asChars(xmlBufContent(input.buf->buffer)),
                               xmlBufUse(input.buf->buffer));
  const std::size_t counted =
      choicesCountedTo_ > input.consumed ? choicesCountedTo_ - input.consumed : 0;
  countChoices(known.substr(std::min(counted, known.size())));
  choicesCountedTo_ = input.consumed + known.size();
}

void XmlTreeBuilder::countChoices(std::string_view declarations) noexcept {
  choices_ += static_cast<std::size_t>(std::count(declarations.begin(), declarations.end(), '|'));
  if (choices_ > MAX_CHOICES) {
    refuse(TOO_MANY_CHOICES);
  }
}

void XmlTreeBuilder::refuse(const char* message) noexcept {
  stopped_ = true;
  if (refusal_) {
    return;
  }
  try {
    refusal_.emplace(onOneLine(message), line(), column());
  } catch (...) {
    exception_ = std::current_exception();
  }
}

std::shared_ptr<XmlDocument> XmlTreeBuilder::finish() {
  if (exception_) {
    std::rethrow_exception(exception_);
  }
  if (outOfMemory_) {
    throw std::bad_alloc();
  }
  if (!refusal_) {
    if (context_->wellFormed == 0 || somethingIsLeft()) {
      refuse("The document is not well-formed");
    } else if (document_->root_ == nullptr) {
      throw std::bad_alloc();  // whatever is wrong with a document is reported, but not that
    }
  }
  if (refusal_) {
    throw ParseException(*refusal_);
  }
  return std::move(document_);
}

void XmlTreeBuilder::noteMissingName() noexcept {
  if (xmlDictGetUsage(context_->dict) > XML_MAX_DICTIONARY_LIMIT) {
    refuse(TOO_MANY_NAMES);
  } else {
    outOfMemory_ = true;
    stopped_ = true;
  }
}

// libxml2 takes a zero byte behind the root for the end, and a piece of a character for nothing.
bool XmlTreeBuilder::somethingIsLeft() const noexcept {
  const xmlParserInput* const input = context_->input;
  return input != nullptr &&
         (input->cur < input->end ||
          (input->buf != nullptr && input->buf->raw != nullptr && xmlBufUse(input->buf->raw) > 0));
}

void XmlTreeBuilder::noteError(const xmlError& error) noexcept {
  // Broken namespace rules and validity are reported, too, but refuse no document.
  if (refusal_ || error.level != XML_ERR_FATAL) {
    return;
  }
  if (error.code == XML_ERR_NO_MEMORY) {
    noteMissingName();
    return;
  }
  try {
    // Positions inside an entity mean nothing to a reader; ours is that of the reference.
    refusal_.emplace(onOneLine(error.message), line(), column());
  } catch (...) {
    exception_ = std::current_exception();
  }
}

void XmlTreeBuilder::startElement(const xmlParserCtxt* context, const xmlChar* localName,
                                  const xmlChar* prefix, const xmlChar* uri, int attributeCount,
                                  int defaultedCount, const xmlChar** attributes) {
  text_ = nullptr;
  if (depth_ >= MAX_DEPTH) {
    refuse(TOO_DEEP);
    return;
  }
  if (attributeCount > MAX_ATTRIBUTES) {
    refuse(TOO_MANY_ATTRIBUTES);
    return;
  }
  if (context->nsNr > 2 * MAX_NAMESPACES) {
    refuse(TOO_MANY_NAMESPACES);
    return;
  }
  if (namespaceDefaults_ > 0) {
    charge(namespaceDefaults_ * static_cast<std::size_t>(context->nsNr / 2) / LOOKUPS_PER_BYTE);
  }
  if (context != context_) {
    checkNames();
  } else if (allKnown_) {
    askNoMore();
  }
  if (stopped_) {
    return;
  }
  const auto count = static_cast<std::size_t>(attributeCount);
  XmlNode* const node = newNode(XmlNode::ELEMENT, lineOfOpenTag(context));
  auto* const element = ::new (arena_->allocate(
      sizeof(XmlElementData) + count * sizeof(XmlAttribute), alignof(XmlElementData)))
      XmlElementData{internQualified(localName, prefix, uri), nullptr};
  node->data_.element = element;
  auto* const copies = reinterpret_cast<XmlAttribute*>(element + 1);
  const auto written = count - static_cast<std::size_t>(std::max(defaultedCount, 0));
  for (std::size_t i = 0; i < count; ++i) {
    // libxml2 hands out five pointers each: local name, prefix, namespace, value, end of value.
    const xmlChar* const* const source = attributes + 5 * i;
    if (source[0] == nullptr || source[3] == nullptr) {
      noteMissingName();
      return;
    }
    const auto size = static_cast<std::size_t>(source[4] - source[3]);
    if (i >= written) {
      charge(size + asView(source[0]).size() + asView(source[1]).size() + REFERENCE_COST);
      if (stopped_) {
        return;
      }
    }
    if (size > MAX_LANGUAGE_TAG && source[2] == context->str_xml_ns &&
        asView(source[0]) == "lang") {
      refuse(TOO_LONG_A_TAG);
      return;
    }
    ::new (copies + i)
        XmlAttribute{internQualified(source[0], source[1], source[2]),
                     copy(asChars(source[3]), size), static_cast<std::uint32_t>(size)};
  }
  node->size_ = static_cast<std::uint32_t>(count);
  link(node);
  open_[depth_++] = {node, nullptr};
  lastLine_ = line();
}

void XmlTreeBuilder::endElement() noexcept {
  closeText();
  if (depth_ > 0) {
    --depth_;
  }
}

void XmlTreeBuilder::appendText(const char* text, std::size_t size) {
  if (depth_ == 0 || size == 0) {
    return;
  }
  const unsigned int begin = std::exchange(lastLine_, line());
  if (text_ == nullptr) {
    XmlNode* const node = newNode(XmlNode::TEXT, begin);
    char* const bytes = copy(text, size);
    node->data_.text = bytes;
    node->size_ = static_cast<std::uint32_t>(size);
    link(node);
    text_ = node;
    textEnd_ = bytes + size;
    textCapacity_ = size;
    return;
  }
  const std::size_t oldSize = text_->size_;
  if (size > std::numeric_limits<std::uint32_t>::max() - oldSize) {
    refuse(TOO_LONG);
    return;
  }
  if (oldSize + size > textCapacity_) {
    // The arena hands out bytes one behind the other, so the text usually just goes on.
    const std::size_t more = oldSize + size - textCapacity_;
    char* const bytes = static_cast<char*>(arena_->allocate(more, 1));
    if (bytes == text_->data_.text + textCapacity_) {
      textCapacity_ += more;
    } else {
      const std::size_t capacity = 2 * (oldSize + size);
      char* const moved = static_cast<char*>(arena_->allocate(capacity, 1));
      std::memcpy(moved, text_->data_.text, oldSize);
      text_->data_.text = moved;
      textEnd_ = moved + oldSize;
      textCapacity_ = capacity;
    }
  }
  std::memcpy(textEnd_, text, size);
  textEnd_ += size;
  text_->size_ = static_cast<std::uint32_t>(oldSize + size);
}

void XmlTreeBuilder::appendOther(XmlNode::Type type) {
  if (depth_ == 0) {
    return;  // before or behind the root, or in the DTD
  }
  closeText();
  link(newNode(type, lastLine_));
}

void XmlTreeBuilder::charge(std::size_t bytes) noexcept {
  expanded_ += bytes;
  if (expanded_ > EXPANSION_FLOOR + EXPANSION_FACTOR * inputSize_) {
    refuse(TOO_MUCH_EXPANSION);
  }
}

void XmlTreeBuilder::closeText() noexcept {
  text_ = nullptr;
  lastLine_ = line();
}

// Near its end libxml2 asks at every step whether there is more, which takes more time than the
// step; a parser that is handed its bytes does not ask. What is still to be converted comes by the
// same way.
void XmlTreeBuilder::askNoMore() noexcept {
  allKnown_ = false;
  xmlParserInputBuffer* const buffer = context_->input == nullptr ? nullptr : context_->input->buf;
  if (buffer != nullptr && buffer->encoder == nullptr) {
    buffer->readcallback = nullptr;
    context_->progressive = 1;
  }
}

void XmlTreeBuilder::link(XmlNode* node) noexcept {
  if (depth_ == 0) {
    document_->root_ = node;
    node->document_ = document_.get();
    return;
  }
  OpenElement& parent = open_[depth_ - 1];
  if (parent.lastChild == nullptr) {
    const_cast<XmlElementData*>(parent.node->data_.element)->firstChild = node;
  } else {
    parent.lastChild->nextSibling_ = node;
  }
  parent.lastChild = node;
}

const XmlSymbol* XmlTreeBuilder::newSymbol(const XmlSymbol* namespaceUri, std::string_view prefix,
                                           std::string_view name) {
  const std::size_t size = name.size() + (prefix.empty() ? 0 : prefix.size() + 1);
  void* const memory = arena_->allocate(sizeof(XmlSymbol) + size, alignof(XmlSymbol));
  auto* const symbol = ::new (memory) XmlSymbol{namespaceUri, static_cast<std::uint32_t>(size)};
  char* bytes = reinterpret_cast<char*>(symbol + 1);
  if (!prefix.empty()) {
    std::memcpy(bytes, prefix.data(), prefix.size());
    bytes[prefix.size()] = ':';
    bytes += prefix.size() + 1;
  }
  std::memcpy(bytes, name.data(), name.size());
  return symbol;
}

const XmlSymbol* XmlTreeBuilder::internNew(const xmlChar* name, const xmlChar* namespaceUri) {
  const XmlSymbol* const uri = namespaceUri == nullptr ? nullptr : intern(namespaceUri, nullptr);
  const XmlSymbol* const symbol = newSymbol(uri, {}, asView(name));
  if (++symbolCount_ * 2 > symbolMask_) {
    growSymbols();
  }
  slotFor(name, namespaceUri) = {name, namespaceUri, symbol};
  return symbol;
}

void XmlTreeBuilder::growSymbols() {
  std::vector<Symbol> smaller(symbols_.size() * 2);
  symbols_.swap(smaller);
  symbolMask_ = symbols_.size() - 1;
  for (const Symbol& entry : smaller) {
    if (entry.symbol != nullptr) {
      slotFor(entry.name, entry.namespaceUri) = entry;
    }
  }
}

// Of the document itself: a parameter entity lies upon it while it is read.
unsigned int XmlTreeBuilder::line() const noexcept {
  return context_->inputNr == 0 ? 0U : asPosition(context_->inputTab[0]->line);
}

unsigned int XmlTreeBuilder::column() const noexcept {
  return context_->inputNr == 0 ? 0U : asPosition(context_->inputTab[0]->col);
}

// libxml2 reports an element at the end of its start tag; the reader looks for its beginning. A "<"
// cannot stand within a tag, so the last one begins it.
unsigned int XmlTreeBuilder::lineOfOpenTag(const xmlParserCtxt* context) const noexcept {
  const unsigned int end = line();
  const xmlParserInput* const input = context_->input;
  if (end == lastLine_ || context != context_ || input == nullptr) {
    return end;
  }
  const char* const base = asChars(input->base);
  const char* const behind = asChars(input->cur);
  const void* at = ::memrchr(base, '<', static_cast<std::size_t>(behind - base));
  unsigned int begin = end;
  while (at != nullptr && begin > 0) {
    const char* const next = static_cast<const char*>(at) + 1;
    at = std::memchr(next, '\n', static_cast<std::size_t>(behind - next));
    begin -= at == nullptr ? 0 : 1;
  }
  return begin;
}

}  // namespace orvane::nimbrel::util::internal
