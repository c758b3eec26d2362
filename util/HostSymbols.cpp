#include "util/HostSymbols.h"

// Defaults for programs without a host. Weak, so that a host's own definitions take precedence, and
// constant-initialised: a value set while loading would overwrite the host's.
extern "C" {

__attribute__((weak)) const char* APP_ID = "nimbrel";
__attribute__((weak)) std::uint32_t g_quillo_log_mask = 0;

__attribute__((weak)) int corvel_get_int(const char* /*group*/, const char* /*name*/, int* status,
                                         int defaultValue) {
  if (status != nullptr) {
    *status = -1;
  }
  return defaultValue;
}
}
