#pragma once

#include <syslog.h>

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

/// Writes one syslog line "D APP_ID:site:message:" at LOG_DEBUG while the debug bit is set; nothing
/// is evaluated otherwise. `site` is the qualified name of the function, `message` a literal printf
/// format for the arguments that follow.
///
/// Arguments come from documents and are passed on as they are: they cannot touch the format, but
/// what is in them, line breaks and control characters included, reaches syslog unchanged (the
/// values of attributes have their white space squeezed to spaces before). It is for the syslog
/// daemon to escape control characters, as the usual ones do.
#define NIMBREL_LOG_DEBUG(site, message, ...)                                                   \
  do {                                                                                          \
    if ((::orvane::nimbrel::util::logMask() & ::orvane::nimbrel::util::LOG_MASK_DEBUG) != 0U) { \
      ::syslog(LOG_DEBUG, "D %s:%s:" message ":", APP_ID, site, __VA_ARGS__);                   \
    }                                                                                           \
  } while (false)

/// Writes one syslog line "W APP_ID:key:message:" at LOG_WARNING while the warning bit is set.
/// `key` is a lower-case event key, `message` a literal without conversions.
#define NIMBREL_LOG_WARNING(key, message)                                                         \
  do {                                                                                            \
    if ((::orvane::nimbrel::util::logMask() & ::orvane::nimbrel::util::LOG_MASK_WARNING) != 0U) { \
      ::syslog(LOG_WARNING, "W %s:%s:" message ":", APP_ID, key);                                 \
    }                                                                                             \
  } while (false)
