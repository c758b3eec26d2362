#pragma once

#include <memory>
#include <string>

#include "config/Api.h"
#include "util/FilenameMunger.h"
#include "util/SharedPtr.h"
#include "util/UriMunger.h"

/// libsoup's `SoupURI` by its tag, so that no header of libsoup is needed.
struct _SoupURI;  // NOLINT(clang-diagnostic-reserved-identifier): the tag is libsoup's

namespace orvane::zel::config {

namespace detail {
struct UriFunctions;
}

/// What a `PelloWidgetIdParser` holds, for hosts that normalise identifiers themselves. Copies
/// share the mungers and the default base. Immutable: for any thread as far as the mungers are.
class NIMBREL_CONFIG_API PelloWidgetIdParserImpl {
 public:
  /// Makes the default base, then throws `std::invalid_argument` "uriMunger cannot be NULL." or
  /// "filenameMunger cannot be NULL.", tested in this order. When libsoup does not accept the
  /// default base, that is logged as a warning, and only relative identifiers are rejected. When
  /// libsoup cannot be loaded, the same warning is logged, and every use throws
  /// `std::runtime_error` that says why.
  PelloWidgetIdParserImpl(std::shared_ptr<util::UriMunger> uriMunger,
                          std::shared_ptr<util::FilenameMunger> filenameMunger);

  /// The URI "http://", never null. Throws `std::runtime_error` "soup_uri_new failed to create our
  /// default base URI." when there is none, or with the reason why libsoup cannot be loaded. In a
  /// build without libsoup, nobody may look into it.
  const std::shared_ptr<_SoupURI>& getDefaultBaseURI() const;

  /// See `PelloWidgetIdParser::createNormalizedWidgetId`.
  std::string createNormalizedWidgetId(const char* widgetId, bool mungeHost) const;

  /// Has the filename munger rewrite a name in place. Throws what that throws.
  void mungeFilename(std::string& name) const { filenameMunger_->munge(name); }

 private:
  std::shared_ptr<util::UriMunger> uriMunger_;
  std::shared_ptr<util::FilenameMunger> filenameMunger_;
  std::shared_ptr<_SoupURI> defaultBaseUri_;
  const detail::UriFunctions* uris_ = nullptr;  // null: they could not be loaded
  std::string loadError_;
};

}  // namespace orvane::zel::config
