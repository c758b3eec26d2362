#include "widgetid/PelloWidgetIdParserImpl.h"

#include <cstring>
#include <stdexcept>
#include <utility>

#include "util/Log.h"
#include "widgetid/WidgetIdError.h"
#include "widgetid/uri/UriFunctions.h"

namespace orvane::zel::config {
namespace {

void requireLoaded(const detail::UriFunctions* uris, const std::string& loadError) {
  if (uris == nullptr) {
    throw std::runtime_error("No URI can be read: " + loadError);
  }
}

}  // namespace

PelloWidgetIdParserImpl::PelloWidgetIdParserImpl(
    std::shared_ptr<util::UriMunger> uriMunger,
    std::shared_ptr<util::FilenameMunger> filenameMunger)
    : uriMunger_(std::move(uriMunger)), filenameMunger_(std::move(filenameMunger)) {
  try {
    uris_ = &detail::uriFunctions();
    if (_SoupURI* const base = uris_->parse("http://")) {
      defaultBaseUri_.reset(base, uris_->free);
    }
  } catch (const std::runtime_error& error) {
    loadError_ = error.what();
  }
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

const std::shared_ptr<_SoupURI>& PelloWidgetIdParserImpl::getDefaultBaseURI() const {
  requireLoaded(uris_, loadError_);
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
  requireLoaded(uris_, loadError_);
  std::unique_ptr<_SoupURI, void (*)(_SoupURI*)> uri(uris_->parse(widgetId), uris_->free);
  if (uri == nullptr) {
    uri.reset(uris_->parseWithBase(getDefaultBaseURI().get(), widgetId));
  }
  if (uri == nullptr) {
    throw WidgetIdError("The provided widget id is not a valid URI.");
  }
  const char* const host = uris_->host(uri.get());
  const char* const path = uris_->path(uri.get());

  std::string normalizedId;
  if (host != nullptr && *host != '\0') {
    normalizedId = mungeHost ? uriMunger_->munge(host) : std::string(host);
  }
  const bool hasPath = path != nullptr && *path != '\0' && std::strcmp(path, "/") != 0;
  if (hasPath) {
    normalizedId += path;
  } else if (!normalizedId.empty() && normalizedId.back() == '/') {
    normalizedId.pop_back();
  }
  return normalizedId;
}

}  // namespace orvane::zel::config
