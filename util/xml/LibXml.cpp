#include "util/xml/LibXml.h"

#include <libxml/globals.h>
#include <libxml/threads.h>
#include <libxml/tree.h>

#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string>

#include "util/ParseException.h"

namespace orvane::nimbrel::util::internal::libxml {
namespace {

// Entities are replaced; that alone would also read external ones, which are never declared as
// such.
constexpr int OPTIONS = XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_IGNORE_ENC
#if LIBXML_VERSION >= 21300
                        | XML_PARSE_NO_XXE
#endif
    ;

template <typename T>
T* orBadAlloc(T* pointer) {
  if (pointer == nullptr) {
    throw std::bad_alloc();
  }
  return pointer;
}

#if LIBXML_VERSION < 21400
// What 2.12 and 2.13 advise against has no replacement before 2.14.
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

/// libxml2 2.9 goes on with a null pointer when it has no memory to make a buffer larger, so that
/// of a document is large to begin with. Belongs to one thread, and is set back.
class BufferSizeGuard {
 public:
  explicit BufferSizeGuard(int size) noexcept { xmlDefaultBufferSize = size; }
  BufferSizeGuard(const BufferSizeGuard&) = delete;
  BufferSizeGuard& operator=(const BufferSizeGuard&) = delete;
  ~BufferSizeGuard() { xmlDefaultBufferSize = before_; }

 private:
  int before_ = xmlDefaultBufferSize;
};

#if LIBXML_VERSION < 21200
/// Makes what libxml2 keeps for each thread but the first. It would do so by itself, but go on with
/// a null pointer when there is no memory. A block of the same size is allocated before and freed:
/// it is the next one that malloc gives to the thread.
void makeThreadState() {
  if (xmlIsMainThread() == 0) {
    void* volatile block = orBadAlloc(std::malloc(sizeof(xmlGlobalState)));
    std::free(block);
    orBadAlloc(xmlGetGlobalState());
  }
}
#endif

void push(xmlParserCtxt* context, xmlParserInput* input) {
  if (inputPush(context, orBadAlloc(input)) < 0) {
    throw std::bad_alloc();  // it has freed the input
  }
}
#else
void push(xmlParserCtxt* context, xmlParserInput* input) {
  if (xmlCtxtPushInput(context, orBadAlloc(input)) < 0) {
    xmlFreeInputStream(input);
    throw std::bad_alloc();
  }
}
#endif

struct FirstStart {
  FirstStart() {
#if LIBXML_VERSION < 21200
    makeThreadState();
#endif
    xmlInitParser();
  }
};

long runningVersion() noexcept {
  static const long version = std::strtol(xmlParserVersion, nullptr, 10);
  return version;
}

}  // namespace

Library::Library() {
  const long running = runningVersion();
  if (!canRun(LIBXML_VERSION, running)) {
    throw ParseException("libxml2 of version " + std::to_string(running) +
                             " cannot be used by a library that was built for version " +
                             std::to_string(LIBXML_VERSION),
                         0, 0);
  }
  // libxml2 2.9 asks without a lock whether it is running, so the first start must come before all
  // other threads' work. Later ones are for a host that has shut it down.
  static const FirstStart firstStart;
#if LIBXML_VERSION < 21200
  makeThreadState();
#endif
  xmlInitParser();
#if LIBXML_VERSION >= 21200
  // What it keeps for each thread; it ends the process when there is no memory for that later.
  if (xmlCheckThreadLocalStorage() != 0) {
    throw std::bad_alloc();
  }
#endif
}

ErrorGuard::ErrorGuard(xmlStructuredErrorFunc handler, void* data) noexcept
    : hostHandler_(xmlStructuredError), hostData_(xmlStructuredErrorContext) {
  if (const xmlError* const last = xmlGetLastError()) {
    xmlCopyError(const_cast<xmlError*>(last), &lastError_);
  }
  xmlSetStructuredErrorFunc(data, handler);
}

ErrorGuard::~ErrorGuard() {
  xmlSetStructuredErrorFunc(hostData_, hostHandler_);
  if (lastError_.code == XML_ERR_OK) {
    xmlResetLastError();
    return;
  }
  // There is no other way to write it; and nothing resets it in between.
  if (const xmlError* const last = xmlGetLastError()) {
    xmlCopyError(&lastError_, const_cast<xmlError*>(last));
  }
  xmlResetError(&lastError_);
}

void ContextDeleter::operator()(xmlParserCtxt* context) const noexcept {
  xmlFreeDoc(context->myDoc);
  context->myDoc = nullptr;
  xmlFreeParserCtxt(context);
}

Context newContext(const xmlSAXHandler& sax, void* data) {
#if LIBXML_VERSION >= 21100
  Context context(orBadAlloc(xmlNewSAXParserCtxt(&sax, nullptr)));
#else
  Context context(orBadAlloc(xmlNewParserCtxt()));
  *context->sax = sax;
#endif
  xmlCtxtUseOptions(context.get(), OPTIONS);
#if LIBXML_VERSION < 21400
  context->_private = data;
#else
  xmlCtxtSetPrivate(context.get(), data);
  // What entities may bring is counted by ourselves.
  xmlCtxtSetMaxAmplification(context.get(), std::numeric_limits<unsigned int>::max());
#endif
  return context;
}

void stop(xmlParserCtxt* document, void* current) noexcept {
  xmlStopParser(document);
#if LIBXML_VERSION < 21400
  // Else it would look up by itself the entities that are withheld from it.
  document->wellFormed = 0;
  if (current != document) {
    xmlStopParser(static_cast<xmlParserCtxt*>(current));
    static_cast<xmlParserCtxt*>(current)->wellFormed = 0;
  }
#else
  static_cast<void>(current);
#endif
}

void setInput(xmlParserCtxt* context, const char* bytes, std::size_t size) {
#if LIBXML_VERSION >= 21400
  constexpr auto NO_COPY =
      static_cast<xmlParserInputFlags>(XML_INPUT_BUF_STATIC | XML_INPUT_BUF_ZERO_TERMINATED);
  push(context, xmlNewInputFromMemory(nullptr, bytes, size, NO_COPY));
#else
  static_cast<void>(size);
  push(context, xmlNewStringInputStream(context, reinterpret_cast<const xmlChar*>(bytes)));
#if LIBXML_VERSION < 21000
  // All bytes are there, but 2.9 would ask for more of them at every step within the last 250.
  if (runningVersion() < 21000) {
    context->progressive = 1;
  }
#endif
#endif
}

void setInput(xmlParserCtxt* context, xmlInputReadCallback read, void* data) {
#if LIBXML_VERSION >= 21400
  push(context,
       xmlNewInputFromIO(nullptr, read, nullptr, data, static_cast<xmlParserInputFlags>(0)));
#else
  const BufferSizeGuard guard(24'000);  // it makes them twice as large
  xmlParserInputBuffer* const buffer =
      orBadAlloc(xmlParserInputBufferCreateIO(read, nullptr, data, XML_CHAR_ENCODING_NONE));
  xmlParserInput* const input = xmlNewIOInputStream(context, buffer, XML_CHAR_ENCODING_NONE);
  if (input == nullptr) {
    xmlFreeParserInputBuffer(buffer);
  }
  push(context, input);
#endif
}

bool rememberDefault(xmlParserCtxt* context, const xmlChar* element, const xmlChar* attribute,
                     const xmlChar* value) noexcept {
#if LIBXML_VERSION < 21300
  xmlDict* const names = dictionaryOf(context);
  bool kept = xmlDictLookup(names, value, -1) != nullptr;
  for (const xmlChar* qualified : {element, attribute}) {
    int prefixSize = 0;
    if (const xmlChar* const local = xmlSplitQName3(qualified, &prefixSize)) {
      kept = kept && xmlDictLookup(names, local, -1) != nullptr &&
             xmlDictLookup(names, qualified, prefixSize) != nullptr;
    }
  }
  return kept;
#else
  static_cast<void>(context);
  static_cast<void>(element);
  static_cast<void>(attribute);
  static_cast<void>(value);
  return true;
#endif
}

unsigned int lineOfOpenTag(xmlParserCtxt* context) noexcept {
  const xmlChar* const base = context->input->base;
  const xmlChar* const behind = context->input->cur;
  unsigned int line = positionOf(context).line;
  const void* at = ::memrchr(base, '<', static_cast<std::size_t>(behind - base));
  while (at != nullptr && line > 0) {
    const xmlChar* const next = static_cast<const xmlChar*>(at) + 1;
    at = std::memchr(next, '\n', static_cast<std::size_t>(behind - next));
    line -= at == nullptr ? 0 : 1;
  }
  return line;
}

}  // namespace orvane::nimbrel::util::internal::libxml
