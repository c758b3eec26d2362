// Taking identifiers apart with libsoup.

#include <libsoup/soup.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

#include "widgetid/uri/UriFunctions.h"

namespace {

// What libsoup knows by name. It hands every other scheme to GLib, which keeps each different one
// until the process ends.
constexpr std::string_view KNOWN_SCHEMES[] = {"http", "https",    "ftp", "file",
                                              "data", "resource", "ws",  "wss"};

/// The identifier with a scheme that libsoup does not know replaced by one that stands for all of
/// them. Finds the scheme as libsoup does, which skips white space in front and removes tabs and
/// line breaks everywhere.
std::string withFamiliarScheme(std::string_view widgetId) {
  std::size_t at = 0;
  while (at < widgetId.size() && g_ascii_isspace(widgetId[at])) {
    ++at;
  }
  std::string scheme;
  for (; at < widgetId.size(); ++at) {
    const char c = widgetId[at];
    const bool isInScheme =
        g_ascii_isalpha(c) ||
        (!scheme.empty() && (g_ascii_isdigit(c) || c == '+' || c == '-' || c == '.'));
    if (isInScheme) {
      scheme += g_ascii_tolower(c);
    } else if (c != '\t' && c != '\n' && c != '\r') {
      break;
    }
  }
  const bool hasScheme = at < widgetId.size() && widgetId[at] == ':' && !scheme.empty();
  const bool isKnown = std::find(std::begin(KNOWN_SCHEMES), std::end(KNOWN_SCHEMES), scheme) !=
                       std::end(KNOWN_SCHEMES);
  if (!hasScheme || isKnown) {
    return std::string(widgetId);
  }
  return "x" + std::string(widgetId.substr(at));
}

SoupURI* parse(const char* text) {
  return soup_uri_new(withFamiliarScheme(text).c_str());
}

SoupURI* parseWithBase(SoupURI* base, const char* text) {
  return soup_uri_new_with_base(base, withFamiliarScheme(text).c_str());
}

void freeUri(SoupURI* uri) {
  soup_uri_free(uri);
}

const char* host(const SoupURI* uri) {
  return uri->host;
}

const char* path(const SoupURI* uri) {
  return uri->path;
}

}  // namespace

const orvane::zel::config::detail::UriFunctions nimbrel_libsoup_uris = {parse, parseWithBase,
                                                                        freeUri, host, path};
