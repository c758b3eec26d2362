#pragma once

#include <syslog.h>

#include "util/HostSymbols.h"

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
