#include "config/BasicConfig.h"

#include <stdexcept>
#include <string_view>

namespace orvane::nimbrel::config {

Config::~Config() = default;

BasicConfig::BasicConfig() = default;
BasicConfig::BasicConfig(const BasicConfig&) = default;
BasicConfig& BasicConfig::operator=(const BasicConfig&) = default;
BasicConfig::~BasicConfig() = default;

// The reading and the writing operation of a field.
#define NIMBREL_FIELD(getter, name)                            \
  auto BasicConfig::getter() const->const decltype(name##_)& { \
    return name##_;                                            \
  }                                                            \
  auto BasicConfig::name()->decltype(name##_)& {               \
    return name##_;                                            \
  }

NIMBREL_FIELD(getAuthor, author)
NIMBREL_FIELD(getFeatures, features)
NIMBREL_FIELD(getIcons, icons)
NIMBREL_FIELD(getStartFile, startFile)
NIMBREL_FIELD(getDescription, description)
NIMBREL_FIELD(getHeight, height)
NIMBREL_FIELD(getWidth, width)
NIMBREL_FIELD(getId, id)
NIMBREL_FIELD(getLicense, license)
NIMBREL_FIELD(getName, name)
NIMBREL_FIELD(getPreferences, preferences)
NIMBREL_FIELD(getShortName, shortName)
NIMBREL_FIELD(getWindowModes, windowModes)
NIMBREL_FIELD(getUserAgentLocales, userAgentLocales)
NIMBREL_FIELD(getVersion, version)
NIMBREL_FIELD(getTavloApplicationId, tavloApplicationId)
NIMBREL_FIELD(getTavloApplicationVersion, tavloApplicationVersion)
NIMBREL_FIELD(getAccessRequestList, accessRequestList)
NIMBREL_FIELD(getCookieJarSettings, cookieJarSettings)
NIMBREL_FIELD(getOrvnAuthMode, orvnAuthMode)
NIMBREL_FIELD(getNetSettings, netSettings)
NIMBREL_FIELD(getGestureSettings, gestureSettings)
NIMBREL_FIELD(getAppPermissions, appPermissions)
NIMBREL_FIELD(getChromeSettings, chromeSettings)
NIMBREL_FIELD(getAppSettings, appSettings)
NIMBREL_FIELD(getMessagingPermissions, messagingPermissions)
NIMBREL_FIELD(getLocalResources, localResources)
NIMBREL_FIELD(getExports, exports)

#undef NIMBREL_FIELD

std::vector<const Element*> BasicConfig::getElements(const char* name,
                                                     const char* namespaceUri) const {
  if (name == nullptr) {
    throw std::invalid_argument("name");
  }
  std::vector<const Element*> found;
  for (const Element& element : elements_) {
    const util::Option<std::string> elementName = element.getName();
    if (!(elementName == name)) {
      continue;
    }
    const util::Option<std::string> elementNamespace = element.getNamespace();
    const bool matches =
        namespaceUri == nullptr ? !elementNamespace : elementNamespace == namespaceUri;
    if (matches) {
      found.push_back(&element);
    }
  }
  return found;
}

std::shared_ptr<util::XmlDocument>& BasicConfig::document() {
  return document_;
}
std::vector<Element>& BasicConfig::elements() {
  return elements_;
}

}  // namespace orvane::nimbrel::config
