#pragma once

#include "config/Api.h"

struct _SoupURI;  // NOLINT(clang-diagnostic-reserved-identifier): libsoup's name

namespace orvane::zel::config::detail {

/// A URI that was taken apart. Only the functions that made it know what it holds.
using SoupURI = struct _SoupURI;

/// What takes identifiers apart. Behind a table, so that libsoup and the many libraries that it
/// needs are loaded with the first parser of identifiers: reading a document does without them.
struct UriFunctions {
  /// An absolute URI, or null. The caller frees it.
  SoupURI* (*parse)(const char* text);
  /// A URI resolved against `base`, or null. The caller frees it.
  SoupURI* (*parseWithBase)(SoupURI* base, const char* text);
  /// `uri` is not null.
  void (*free)(SoupURI* uri);
  /// Null or text that the URI owns.
  const char* (*host)(const SoupURI* uri);
  const char* (*path)(const SoupURI* uri);
};

/// The functions that this build uses; the first call loads their module. Throws
/// `std::runtime_error` that says why when it cannot be loaded; the next call tries again. For any
/// thread.
const UriFunctions& uriFunctions();

}  // namespace orvane::zel::config::detail

extern "C" {

/// By libsoup. A host's own `soup_uri_new` takes precedence.
NIMBREL_CONFIG_API extern const orvane::zel::config::detail::UriFunctions nimbrel_libsoup_uris;

/// By the same rules, for systems without libsoup 2.4.
NIMBREL_CONFIG_API extern const orvane::zel::config::detail::UriFunctions nimbrel_glib_uris;
}
