// The host of the fuzz targets: it has every log line written, and reads each to its end.

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "util/Log.h"

namespace {

void format(const char* text, va_list arguments) {
  char line[4096];
  std::vsnprintf(line, sizeof line, text, arguments);
}

}  // namespace

extern "C" {

const char* APP_ID = "fuzz";
std::uint32_t g_quillo_log_mask = 0xFFFFFFFF;

int corvel_get_int(const char* /*group*/, const char* /*name*/, int* status, int /*defaultValue*/) {
  *status = 0;
  return 300;
}

__attribute__((visibility("default"))) void syslog(int /*priority*/, const char* text, ...) {
  va_list arguments;
  va_start(arguments, text);
  format(text, arguments);
  va_end(arguments);
}

// What syslog is when the C library's checks are compiled in.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
__attribute__((visibility("default"))) void __syslog_chk(int /*priority*/, int /*flag*/,
                                                         const char* text, ...) {
  va_list arguments;
  va_start(arguments, text);
  format(text, arguments);
  va_end(arguments);
}
}
