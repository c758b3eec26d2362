#pragma once

// What belongs to the process that hosts the libraries. It may define the three symbols itself;
// otherwise those of the utility library count.

#include <cstdint>

#include "util/Api.h"

extern "C" {

/// The application identifier that every log line carries. Data of the host process; the utility
/// library supplies "nimbrel" where the host defines none. Never null. Read at each line.
NIMBREL_UTIL_API extern const char* APP_ID;

/// Which log lines are written: 0x8000 enables debug lines, 0x01000000 warning lines. Data of the
/// host process; the utility library supplies 0 (silent) where the host defines none. The library
/// reads and writes it with relaxed atomic operations, so it may change at any time.
NIMBREL_UTIL_API extern std::uint32_t g_quillo_log_mask;

/// Asks the device for a capability, such as the screen density (group "screen", name "dpi").
/// Supplied by the host process; the utility library supplies one that always fails. Sets `status`
/// to a value other than 0 on failure and then returns `defaultValue`.
NIMBREL_UTIL_API int corvel_get_int(const char* group, const char* name, int* status,
                                    int defaultValue);
}

namespace orvane::nimbrel::util {

/// The bit of `g_quillo_log_mask` that enables debug lines.
constexpr std::uint32_t LOG_MASK_DEBUG = 0x8000;
/// The bit of `g_quillo_log_mask` that enables warning lines.
constexpr std::uint32_t LOG_MASK_WARNING = 0x01000000;

/// The log mask of the process, read atomically. For any thread.
inline std::uint32_t logMask() noexcept {
  return __atomic_load_n(&g_quillo_log_mask, __ATOMIC_RELAXED);
}

/// Replaces the log mask of the process atomically. For any thread.
inline void setLogMask(std::uint32_t mask) noexcept {
  __atomic_store_n(&g_quillo_log_mask, mask, __ATOMIC_RELAXED);
}

}  // namespace orvane::nimbrel::util
