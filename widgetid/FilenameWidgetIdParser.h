#pragma once

#include <string>

#include "config/Api.h"
#include "util/FilenameMunger.h"
#include "util/SharedPtr.h"
#include "widgetid/WidgetIdParser.h"

namespace orvane::zel::config {

/// Derives the names of a widget that is known by the file name of its package.
///
/// Both come from the name without its extension: all from the last "." on, wherever that is. A dot
/// in a directory part counts too, on purpose: installed names depend on it ("dir.d/app" is "dir").
///
/// Shares its munger; immutable otherwise. For any thread as far as the munger is.
class NIMBREL_CONFIG_API FilenameWidgetIdParser : public WidgetIdParser {
 public:
  /// Throws `std::invalid_argument` "filenameMunger was NULL.".
  explicit FilenameWidgetIdParser(std::shared_ptr<util::FilenameMunger> filenameMunger);
  ~FilenameWidgetIdParser() override;

  /// The base name, percent-escaped: ASCII letters, digits, "-._~" and valid UTF-8 beyond ASCII
  /// stay, all other bytes become "%XX". The munger has no part in it.
  ///
  /// Throws `std::invalid_argument` "widgetFilename was NULL." or "filename cannot be the empty
  /// string", and `std::runtime_error` when escaping fails or GLib cannot be loaded.
  std::string deriveWidgetIdAuthority(const char* widgetFilename) const override;

  /// The base name as the munger rewrites it. Throws `std::invalid_argument` as above, and whatever
  /// the munger throws.
  std::string deriveDirectoryName(const char* widgetFilename) const override;

 private:
  std::shared_ptr<util::FilenameMunger> filenameMunger_;
};

}  // namespace orvane::zel::config
