#pragma once

#include <memory>
#include <string>

#include "config/Api.h"
#include "util/FilenameMunger.h"
#include "util/SharedPtr.h"
#include "util/UriMunger.h"
#include "widgetid/WidgetIdParser.h"

namespace orvane::zel::config {

class PelloWidgetIdParserImpl;

/// Derives the names of a widget that is known by a URI, such as the id of its configuration.
///
/// Only the host and the path of the URI count: identifiers that differ in scheme, user
/// information, port, query or fragment alone give the same names, on purpose. libsoup takes the
/// URI apart; docs/identifiers.md shows what becomes of many of them.
///
/// Immutable, and shares its mungers: for any thread as far as they are. Not copyable.
class NIMBREL_CONFIG_API PelloWidgetIdParser : public WidgetIdParser {
 public:
  /// Throws `std::invalid_argument` "uriMunger cannot be NULL." or "filenameMunger cannot be
  /// NULL.", tested in this order.
  PelloWidgetIdParser(std::shared_ptr<util::UriMunger> uriMunger,
                      std::shared_ptr<util::FilenameMunger> filenameMunger);
  ~PelloWidgetIdParser() override;
  PelloWidgetIdParser(const PelloWidgetIdParser&) = delete;
  PelloWidgetIdParser& operator=(const PelloWidgetIdParser&) = delete;

  /// The normalised identifier, host unmunged, percent-escaped except for "%" and valid UTF-8, and
  /// then rewritten by the filename munger: an authority is safe as a name as well.
  ///
  /// Throws what `createNormalizedWidgetId` and the munger throw, and `WidgetIdError` "We were
  /// unable to derive a valid authority from the widget's identifier." when nothing is left of the
  /// identifier, or another when escaping fails.
  std::string deriveWidgetIdAuthority(const char* widgetId) const override;

  /// The normalised identifier, host munged, less one final "/", rewritten by the filename munger.
  /// Throws as above, with the same words.
  std::string deriveDirectoryName(const char* widgetId) const override;

  /// The host, followed by the path unless that is empty or "/". `mungeHost` has the URI munger
  /// rewrite the host. The empty string when there is neither. A derived class may normalise
  /// otherwise and keep the two derivations above, which call this.
  ///
  /// An identifier that is no absolute URI is resolved against "http://". Throws
  /// `std::invalid_argument` "widgetId argument was NULL."; `WidgetIdError` "widgetId argument was
  /// empty" or "The provided widget id is not a valid URI."; `std::runtime_error` "soup_uri_new
  /// failed to create our default base URI." for a relative identifier when libsoup did not accept
  /// "http://", and for every identifier, with the reason, when libsoup cannot be loaded; and what
  /// the URI munger throws.
  virtual std::string createNormalizedWidgetId(const char* widgetId, bool mungeHost) const;

 private:
  std::unique_ptr<PelloWidgetIdParserImpl> impl_;
};

}  // namespace orvane::zel::config
