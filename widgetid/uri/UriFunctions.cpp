#include "widgetid/uri/UriFunctions.h"

#ifdef NIMBREL_CONFIG_MODULE
#include <dlfcn.h>

#include <stdexcept>

#include "util/Module.h"
#endif

namespace orvane::zel::config::detail {

#ifdef NIMBREL_CONFIG_MODULE

namespace {

#ifdef NIMBREL_LIBSOUP
constexpr const char* TABLE = "nimbrel_libsoup_uris";

// libsoup 2.4 ends the process when it is loaded beside libsoup 3.
void requireNoConflict() {
  void* const other = dlopen("libsoup-3.0.so.0", RTLD_LAZY | RTLD_NOLOAD);
  if (other != nullptr) {
    dlclose(other);
  }
  if (other != nullptr || dlsym(RTLD_DEFAULT, "soup_date_time_new_from_http_string") != nullptr) {
    throw std::runtime_error("libsoup 2.4 cannot be loaded into a process that uses libsoup 3");
  }
}
#else
constexpr const char* TABLE = "nimbrel_glib_uris";

void requireNoConflict() {}
#endif

const UriFunctions& load() {
  requireNoConflict();
  return util::internal::openModule<UriFunctions>(NIMBREL_CONFIG_MODULE, TABLE);
}

}  // namespace

const UriFunctions& uriFunctions() {
  static const UriFunctions& functions = load();
  return functions;
}

#else

const UriFunctions& uriFunctions() {
#ifdef NIMBREL_LIBSOUP
  return nimbrel_libsoup_uris;
#else
  return nimbrel_glib_uris;
#endif
}

#endif

}  // namespace orvane::zel::config::detail
