#include "tests/support/FakeSyslog.h"

#include <cstdarg>
#include <cstdint>
#include <cstdio>

namespace orvane::nimbrel::test {

LogLines& logged() {
  static LogLines all;
  return all;
}

namespace {

void keepLine(int priority, const char* format, std::va_list arguments) {
  std::string line(200000, '\0');
  const int size = std::vsnprintf(line.data(), line.size(), format, arguments);
  line.resize(static_cast<std::size_t>(size));
  logged().lines.push_back(std::to_string(priority) + " " + line);
  logged().formats.emplace_back(format);
}

}  // namespace
}  // namespace orvane::nimbrel::test

#pragma GCC visibility push(default)
extern "C" {

const char* APP_ID = "the.host";
std::uint32_t g_quillo_log_mask = 0;

void syslog(int priority, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  orvane::nimbrel::test::keepLine(priority, format, arguments);
  va_end(arguments);
}

/// What `syslog` becomes in a build with _FORTIFY_SOURCE.
// NOLINTNEXTLINE(clang-diagnostic-reserved-identifier,cert-dcl*): the C library chose the name.
void __syslog_chk(int priority, int /*flag*/, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  orvane::nimbrel::test::keepLine(priority, format, arguments);
  va_end(arguments);
}
}
#pragma GCC visibility pop
