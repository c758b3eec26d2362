#include "widgetid/PelloWidgetIdParser.h"

#include <utility>

#include "util/glib/GlibFunctions.h"
#include "widgetid/PelloWidgetIdParserImpl.h"
#include "widgetid/WidgetIdError.h"

namespace orvane::zel::config {
namespace {

// Directory names are rejected with the same words as authorities; hosts match on them.
void requireNotEmpty(const std::string& normalizedId) {
  if (normalizedId.empty()) {
    throw WidgetIdError("We were unable to derive a valid authority from the widget's identifier.");
  }
}

}  // namespace

PelloWidgetIdParser::PelloWidgetIdParser(std::shared_ptr<util::UriMunger> uriMunger,
                                         std::shared_ptr<util::FilenameMunger> filenameMunger)
    : impl_(std::make_unique<PelloWidgetIdParserImpl>(std::move(uriMunger),
                                                      std::move(filenameMunger))) {}

PelloWidgetIdParser::~PelloWidgetIdParser() = default;

std::string PelloWidgetIdParser::deriveWidgetIdAuthority(const char* widgetId) const {
  const std::string normalizedId = createNormalizedWidgetId(widgetId, false);
  requireNotEmpty(normalizedId);
  std::string authority;
  if (!util::internal::glibFunctions().tryEscapeUri(normalizedId.c_str(), "%", authority)) {
    throw WidgetIdError(
        "g_uri_escape_string failed to encode the widget identifier. Cannot derive a canonical "
        "identifier from the widget identifier.");
  }
  impl_->mungeFilename(authority);
  return authority;
}

std::string PelloWidgetIdParser::deriveDirectoryName(const char* widgetId) const {
  std::string name = createNormalizedWidgetId(widgetId, true);
  requireNotEmpty(name);
  if (name.back() == '/') {
    name.pop_back();
  }
  impl_->mungeFilename(name);
  return name;
}

std::string PelloWidgetIdParser::createNormalizedWidgetId(const char* widgetId,
                                                          bool mungeHost) const {
  return impl_->createNormalizedWidgetId(widgetId, mungeHost);
}

}  // namespace orvane::zel::config
