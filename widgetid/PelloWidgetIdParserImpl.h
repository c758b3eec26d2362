#pragma once

#include <libsoup/soup.h>

#include <memory>
#include <string>

#include "util/FilenameMunger.h"
#include "util/UriMunger.h"

namespace orvane::zel::config {

/// What a `PelloWidgetIdParser` holds. Private, as it names libsoup. Immutable.
class PelloWidgetIdParserImpl {
 public:
  /// Throws `std::invalid_argument` for a null munger. When libsoup does not accept the default
  /// base, this is logged as a warning, and only relative identifiers suffer.
  PelloWidgetIdParserImpl(std::shared_ptr<util::UriMunger> uriMunger,
                          std::shared_ptr<util::FilenameMunger> filenameMunger);

  /// The URI "http://", never null. Throws `std::runtime_error` when there is none.
  [[nodiscard]] const std::shared_ptr<SoupURI>& getDefaultBaseURI() const;

  /// See `PelloWidgetIdParser::createNormalizedWidgetId`.
  [[nodiscard]] std::string createNormalizedWidgetId(const char* widgetId, bool mungeHost) const;

  /// Rewrites a name in place.
  void mungeFilename(std::string& name) const { filenameMunger_->munge(name); }

 private:
  std::shared_ptr<util::UriMunger> uriMunger_;
  std::shared_ptr<util::FilenameMunger> filenameMunger_;
  std::shared_ptr<SoupURI> defaultBaseUri_;
};

}  // namespace orvane::zel::config
