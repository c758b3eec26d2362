// The host of the fuzz targets: it has every log line written, and reads each to its end.

#include "fuzz/Host.h"

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <utility>

#include "util/HostSymbols.h"

namespace {

constexpr std::uint64_t FNV_START = 14695981039346656037U;
constexpr std::uint64_t FNV_PRIME = 1099511628211U;

// The C function has no other place for it.
std::uint64_t digest = FNV_START;

void format(const char* text, va_list arguments) {
  char line[4096];
  std::vsnprintf(line, sizeof line, text, arguments);
  for (const char* c = line; *c != '\0'; ++c) {
    digest = (digest ^ static_cast<unsigned char>(*c)) * FNV_PRIME;
  }
  digest = (digest ^ 0xFFU) * FNV_PRIME;  // ends the line
}

}  // namespace

std::uint64_t orvane::nimbrel::fuzz::takeLogDigest() noexcept {
  return std::exchange(digest, FNV_START);
}

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
// NOLINTNEXTLINE(clang-diagnostic-reserved-identifier)
__attribute__((visibility("default"))) void __syslog_chk(int /*priority*/, int /*flag*/,
                                                         const char* text, ...) {
  va_list arguments;
  va_start(arguments, text);
  format(text, arguments);
  va_end(arguments);
}
}
