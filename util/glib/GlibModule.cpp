#include <glib.h>

#include <memory>

#include "util/glib/GlibFunctions.h"

namespace {

using GlibText = std::unique_ptr<gchar, decltype(&g_free)>;

std::string sha256Hex(std::string_view bytes) {
  const GlibText digest(
      g_compute_checksum_for_data(G_CHECKSUM_SHA256, reinterpret_cast<const guchar*>(bytes.data()),
                                  bytes.size()),
      &g_free);
  return digest.get();
}

bool tryEscapeUri(const char* text, const char* keep, std::string& out) {
  const GlibText escaped(g_uri_escape_string(text, keep, TRUE), &g_free);
  if (escaped == nullptr) {
    return false;
  }
  out = escaped.get();
  return true;
}

}  // namespace

extern "C" NIMBREL_UTIL_API const orvane::zel::util::internal::GlibFunctions nimbrel_glib_functions;
const orvane::zel::util::internal::GlibFunctions nimbrel_glib_functions = {sha256Hex, tryEscapeUri};
