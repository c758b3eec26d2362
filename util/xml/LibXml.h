#pragma once

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <cstddef>
#include <memory>
#include <string_view>
#include <type_traits>

#include "util/xml/XmlPosition.h"

// All that depends on the version of libxml2, from 2.9.14 on: what has another name in each, and
// what an old one does wrong. All other files use only what every version has.
namespace orvane::nimbrel::util::internal::libxml {

/// Whether a program that was compiled for one version (20914: 2.9.14) can run on another. In
/// version 2.14 the layout of its structures, and with it the name of the library, changed.
constexpr bool canRun(long compiledFor, long running) noexcept {
  constexpr long OLDEST = 20914;
  constexpr long NEW_LAYOUT = 21400;
  constexpr long NEXT_MAJOR = 30000;
  return running >= OLDEST && running < NEXT_MAJOR &&
         (running >= NEW_LAYOUT) == (compiledFor >= NEW_LAYOUT);
}

/// What it takes to use libxml2. The constructor starts it unless it is running, as a host may have
/// shut it down, and makes what it keeps for the thread. Throws `ParseException` when the libxml2
/// that was loaded does not fit, `std::bad_alloc`.
class Library {
 public:
  Library();
};

/// The type of the error that a callback gets.
using Error = std::conditional_t<(LIBXML_VERSION >= 21200), const xmlError, xmlError>;

/// Whether an element is nested deeper than libxml2 itself allows.
inline bool isTooDeep(const Error& error) noexcept {
  constexpr std::string_view BEGINNING = "Excessive depth in document";
  return error.message != nullptr &&
         std::string_view(error.message).substr(0, BEGINNING.size()) == BEGINNING;
}

/// Has errors that libxml2 reports without a context call `handler`; they would otherwise go to the
/// host's handler or to standard error. At the end, the handler and the last error are the host's
/// again. Both belong to one thread.
class ErrorGuard {
 public:
  ErrorGuard(xmlStructuredErrorFunc handler, void* data) noexcept;
  ErrorGuard(const ErrorGuard&) = delete;
  ErrorGuard& operator=(const ErrorGuard&) = delete;
  ~ErrorGuard();

 private:
  xmlStructuredErrorFunc hostHandler_;
  void* hostData_;
  xmlError lastError_ = {};
};

struct ContextDeleter {
  void operator()(xmlParserCtxt* context) const noexcept;
};
using Context = std::unique_ptr<xmlParserCtxt, ContextDeleter>;

/// A context that replaces entities and reads UTF-8, whatever a document declares. It calls `sax`
/// with itself, or with a context that it makes for the contents of an entity; `dataOf` gives
/// `data` for both. Throws `std::bad_alloc`.
Context newContext(const xmlSAXHandler& sax, void* data);
inline void* dataOf(void* context) noexcept {
#if LIBXML_VERSION >= 21400
  return xmlCtxtGetPrivate(static_cast<xmlParserCtxt*>(context));
#else
  return static_cast<xmlParserCtxt*>(context)->_private;
#endif
}

/// Ends a parse from a callback with the context `current`; libxml2 then unwinds by itself.
void stop(xmlParserCtxt* document, void* current) noexcept;

/// Gives a context all bytes of its document, with a zero byte behind them and none among them;
/// they are not copied. Throws `std::bad_alloc`.
void setInput(xmlParserCtxt* context, const char* bytes, std::size_t size);

/// Lets a context ask for its document, never for more than a few thousand bytes at once. Throws
/// `std::bad_alloc`.
void setInput(xmlParserCtxt* context, xmlInputReadCallback read, void* data);

/// Has libxml2 2.9 store the names in the default of an attribute before it needs them: later it
/// would not notice that there is no memory. False when there is none.
bool rememberDefault(xmlParserCtxt* context, const xmlChar* element, const xmlChar* attribute,
                     const xmlChar* value) noexcept;

inline xmlDict* dictionaryOf(xmlParserCtxt* context) noexcept {
#if LIBXML_VERSION >= 21400
  return xmlCtxtGetDict(context);
#else
  return context->dict;
#endif
}

/// How much a context's dictionary of names holds.
struct NamesSize {
  int count;
  std::size_t bytes;
};
inline NamesSize sizeOfNames(xmlParserCtxt* context) noexcept {
  return {xmlDictSize(dictionaryOf(context)), xmlDictGetUsage(dictionaryOf(context))};
}

/// A place in the document itself, even while an entity is read; zeros behind the end.
inline XmlPosition positionOf(xmlParserCtxt* context) noexcept {
  int line = 0;
  int column = 0;
#if LIBXML_VERSION >= 21500
  xmlCtxtGetInputPosition(context, 0, nullptr, &line, &column, nullptr);
#else
  if (context->inputNr > 0) {
    line = context->inputTab[0]->line;
    column = context->inputTab[0]->col;
  }
#endif
  return {line > 0 ? static_cast<unsigned int>(line) : 0U,
          column > 0 ? static_cast<unsigned int>(column) : 0U};
}

/// The line in which a start tag begins that a context has just read to its end. A "<" cannot stand
/// within a tag, so the last one begins it.
unsigned int lineOfOpenTag(xmlParserCtxt* context) noexcept;

/// Whether bytes are left behind what a context has read: libxml2 2.9 takes a zero byte behind the
/// root for the end.
inline bool hasMore(const xmlParserCtxt* context) noexcept {
  const xmlParserInput* const input = context->input;
  return input != nullptr && input->cur < input->end;
}

}  // namespace orvane::nimbrel::util::internal::libxml
