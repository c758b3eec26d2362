// A host process that defines none, some or all of the symbols that the library takes from it, and
// reports with its exit code whether the library took them. HOST_SYMBOLS: 0, 1 or 2.

#include <cstdint>
#include <cstdio>
#include <cstring>

#include "tests/support/ConfigReader.h"
#include "util/HostSymbols.h"

namespace {

int calls = 0;

}  // namespace

extern "C" {

#if HOST_SYMBOLS >= 1
std::uint32_t g_quillo_log_mask = 0x01000000;
#endif
#if HOST_SYMBOLS >= 2
const char* APP_ID = "the host";

int corvel_get_int(const char* group, const char* name, int* status, int defaultValue) {
  calls += std::strcmp(group, "screen") == 0 && std::strcmp(name, "dpi") == 0 ? 1 : 100;
  *status = 0;
  return defaultValue + 300;
}
#endif
}

namespace {

using namespace orvane::nimbrel;

/// 0, or the number of the first thing that is wrong.
int firstFault() {
  const bool hasMask = HOST_SYMBOLS >= 1;
  const bool hasAll = HOST_SYMBOLS >= 2;
  const std::uint32_t before = hasMask ? 0x01000000 : 0;
  if (g_quillo_log_mask != before || util::logMask() != before) {
    return 1;
  }
  if (std::strcmp(APP_ID, hasAll ? "the host" : "nimbrel") != 0) {
    return 2;
  }
  const auto sizes = test::named("setting", "defaultFontSize", "10") +
                     test::named("setting", "defaultFontSize300", "20");
  const auto record = test::read(test::extension("settings", sizes));
  if (record->getAppSettings().defaultFontSize != (hasAll ? 20 : 10)) {
    return 3;
  }
  if (calls != (hasAll ? 1 : 0)) {
    return 4;
  }
  test::read(test::extension("settings", test::named("setting", "debug", "yes")));
  if (g_quillo_log_mask != 0x0FFFFFFE) {  // the library writes the very variable that we see
    return 5;
  }
  return 0;
}

}  // namespace

int main() {
  const int fault = firstFault();
  std::printf("first fault: %d\n", fault);
  return fault;
}
