// Identifiers, taken apart by libsoup and by the rules that stand in where there is no libsoup.
//
//     http://example.org/a `urn:b`     the whole, its lines, and what backquotes separate
//
// Both give the same host and path: directories on devices have these names.

#include <memory>
#include <string>

#include "fuzz/Property.h"
#include "widgetid/uri/UriFunctions.h"

namespace orvane::zel::fuzz {
namespace {

using config::detail::SoupURI;
using config::detail::UriFunctions;
using nimbrel::fuzz::require;
using nimbrel::fuzz::takeUpTo;

std::string textOf(const char* text) {
  return text == nullptr ? "" : text;
}

/// What an identifier parser looks at; an identifier may have neither.
struct Parts {
  bool isAbsolute = false;
  bool isUri = false;
  std::string host;
  std::string path;
};

Parts partsOf(const std::string& id, const UriFunctions& uris) {
  using Uri = std::unique_ptr<SoupURI, void (*)(SoupURI*)>;
  Parts parts;
  Uri uri(uris.parse(id.c_str()), uris.free);
  parts.isAbsolute = uri != nullptr;
  if (!parts.isAbsolute) {
    const Uri base(uris.parse("http://"), uris.free);
    uri.reset(uris.parseWithBase(base.get(), id.c_str()));
  }
  parts.isUri = uri != nullptr;
  if (parts.isUri) {
    parts.host = textOf(uris.host(uri.get()));
    parts.path = textOf(uris.path(uri.get()));
  }
  return parts;
}

void compare(std::string_view bytes) {
  const std::string id = nimbrel::fuzz::cString(bytes);
  const Parts one = partsOf(id, nimbrel_libsoup_uris);
  const Parts other = partsOf(id, nimbrel_glib_uris);
  require(one.isAbsolute == other.isAbsolute, "both tell absolute identifiers");
  require(one.isUri == other.isUri, "both reject the same identifiers");
  require(one.host == other.host, "both find the same host");
  require(one.path == other.path, "both find the same path");
}

}  // namespace
}  // namespace orvane::zel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace orvane::zel::fuzz;
  std::string_view all = orvane::nimbrel::fuzz::viewOf(data, size);
  compare(all);
  while (!all.empty()) {
    std::string_view line = takeUpTo('\n', all);
    compare(line);
    while (!line.empty()) {
      compare(takeUpTo('`', line));
    }
  }
  return 0;
}
