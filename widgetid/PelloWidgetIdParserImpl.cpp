#include "widgetid/PelloWidgetIdParserImpl.h"

#include <cstring>
#include <stdexcept>
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
  std::unique_ptr<SoupURI, FreeUri> uri(soup_uri_new(widgetId));
  if (uri == nullptr) {
    uri.reset(soup_uri_new_with_base(getDefaultBaseURI().get(), widgetId));
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
