#include "util/glib/GlibFunctions.h"

#ifdef NIMBREL_UTIL_MODULE
#include "util/Module.h"
#else
extern "C" const orvane::zel::util::internal::GlibFunctions nimbrel_glib_functions;
#endif

namespace orvane::zel::util::internal {

const GlibFunctions& glibFunctions() {
#ifdef NIMBREL_UTIL_MODULE
  static const auto& functions =
      openModule<GlibFunctions>(NIMBREL_UTIL_MODULE, "nimbrel_glib_functions");
  return functions;
#else
  return nimbrel_glib_functions;
#endif
}

}  // namespace orvane::zel::util::internal
