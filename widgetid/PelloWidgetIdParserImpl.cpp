#include "widgetid/PelloWidgetIdParserImpl.h"

#include <libsoup/soup.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "util/Log.h"
#include "widgetid/WidgetIdError.h"

namespace orvane::zel::config {

namespace {

struct FreeUri {
  void operator()(SoupURI* uri) const noexcept {
    if (uri != nullptr) {
      soup_uri_free(uri);
    }
  }
};

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

}  // namespace

PelloWidgetIdParserImpl::PelloWidgetIdParserImpl(
    std::shared_ptr<util::UriMunger> uriMunger,
    std::shared_ptr<util::FilenameMunger> filenameMunger)
    : uriMunger_(std::move(uriMunger)),
      filenameMunger_(std::move(filenameMunger)),
      defaultBaseUri_(soup_uri_new("http://"), FreeUri()) {
  if (uriMunger_ == nullptr) {
    throw std::invalid_argument("uriMunger cannot be NULL.");
  }
  if (filenameMunger_ == nullptr) {
    throw std::invalid_argument("filenameMunger cannot be NULL.");
  }
  if (defaultBaseUri_ == nullptr) {
    NIMBREL_LOG_WARNING("pellowidgetidparserimpl_nodefaultbaseuri",
                        "soup_uri_new failed to create our default base URI. Calls to "
                        "PelloWidgetIdParserImpl.getDefaultBaseURI will throw a runtime_error.");
  }
}

const std::shared_ptr<SoupURI>& PelloWidgetIdParserImpl::getDefaultBaseURI() const {
  if (defaultBaseUri_ == nullptr) {
    throw std::runtime_error("soup_uri_new failed to create our default base URI.");
  }
  return defaultBaseUri_;
}

std::string PelloWidgetIdParserImpl::createNormalizedWidgetId(const char* widgetId,
                                                              bool mungeHost) const {
  if (widgetId == nullptr) {
    throw std::invalid_argument("widgetId argument was NULL.");
  }
  if (*widgetId == '\0') {
    throw WidgetIdError("widgetId argument was empty");
  }
  const std::string id = withFamiliarScheme(widgetId);
  std::unique_ptr<SoupURI, FreeUri> uri(soup_uri_new(id.c_str()));
  if (uri == nullptr) {
    uri.reset(soup_uri_new_with_base(getDefaultBaseURI().get(), id.c_str()));
  }
  if (uri == nullptr) {
    throw WidgetIdError("The provided widget id is not a valid URI.");
  }

  std::string normalizedId;
  if (uri->host != nullptr && *uri->host != '\0') {
    normalizedId = mungeHost ? uriMunger_->munge(uri->host) : std::string(uri->host);
  }
  const bool hasPath =
      uri->path != nullptr && *uri->path != '\0' && std::strcmp(uri->path, "/") != 0;
  if (hasPath) {
    normalizedId += uri->path;
  } else if (!normalizedId.empty() && normalizedId.back() == '/') {
    normalizedId.pop_back();
  }
  return normalizedId;
}

}  // namespace orvane::zel::config
