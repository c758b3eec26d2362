#include "tools/Host.h"

#include <libxml/parser.h>
#include <libxml/threads.h>
#include <libxml/xmlerror.h>
#include <malloc.h>
#include <syslog.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>

#include "tools/output/Escape.h"
#include "tools/output/Output.h"
#include "util/HostSymbols.h"

// The tool is the library's host: it supplies the symbols that a device would. They are C functions
// without a place for state of their own, so what they answer is kept here, written once before a
// document is parsed.
namespace {

std::optional<int> density;
bool copyLog = false;

void copyLine(const char* format, std::va_list arguments) {
  std::va_list again;
  va_copy(again, arguments);  // the caller goes on with its own
  char* line = nullptr;
  const int size = ::vasprintf(&line, format, again);
  va_end(again);
  if (size >= 0) {
    const std::unique_ptr<char, decltype(&std::free)> owner(line, &std::free);
    orvane::nimbrel::tools::writeError(orvane::nimbrel::tools::escape(line));
  }
}

void logLine(int priority, const char* format, std::va_list arguments) {
  if (copyLog) {
    copyLine(format, arguments);
  }
  vsyslog(priority, format, arguments);
}

}  // namespace

extern "C" {

int corvel_get_int(const char* group, const char* name, int* status, int defaultValue) {
  if (density && std::string_view(group) == "screen" && std::string_view(name) == "dpi") {
    return *density;
  }
  *status = -1;
  return defaultValue;
}

// The next two stand before the C library's functions of these names, so that the lines reach
// standard error whether or not a system log runs, free of what a document could do to a terminal.
// They still go to the system log.
__attribute__((visibility("default"))) void syslog(int priority, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  logLine(priority, format, arguments);
  va_end(arguments);
}

// What code compiled with _FORTIFY_SOURCE calls instead.
// NOLINTNEXTLINE(clang-diagnostic-reserved-identifier): the C library gives it this name.
__attribute__((visibility("default"))) void __syslog_chk(int priority, int /*flag*/,
                                                         const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  logLine(priority, format, arguments);
  va_end(arguments);
}
}

namespace orvane::nimbrel::tools {

void silenceXml() noexcept {
#if LIBXML_VERSION >= 21200
  if (xmlCheckThreadLocalStorage() != 0) {  // it would end the process in its own way
    endWithoutMemory();
  }
#endif
  // Generic, as the second parameter is constant or not by the version of libxml2.
  xmlSetStructuredErrorFunc(nullptr, [](void* /*context*/, auto* /*error*/) {});
  xmlInitParser();  // here, as the function counts for this thread alone
}

void keepFreedMemory() noexcept {
#ifdef M_TRIM_THRESHOLD  // of glibc
  constexpr int MEBIBYTE = 1024 * 1024;
  ::mallopt(M_TRIM_THRESHOLD, 8 * MEBIBYTE);
  ::mallopt(M_MMAP_THRESHOLD, MEBIBYTE);
#endif
}

void answerDensity(int answer) noexcept {
  density = answer;
}

void copyLogToStandardError() noexcept {
  copyLog = true;
  util::setLogMask(util::logMask() | util::LOG_MASK_DEBUG);
}

}  // namespace orvane::nimbrel::tools
