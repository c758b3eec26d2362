#include "config/BasicConfig.h"

#include <stdexcept>
#include <string_view>

namespace orvane::nimbrel::config {

BasicConfig::BasicConfig() = default;
BasicConfig::BasicConfig(const BasicConfig&) = default;
BasicConfig& BasicConfig::operator=(const BasicConfig&) = default;
BasicConfig::~BasicConfig() = default;

const util::Option<Config::Author>& BasicConfig::getAuthor() const {
  return author_;
}
const std::vector<Config::Feature>& BasicConfig::getFeatures() const {
  return features_;
}
const std::vector<Config::Icon>& BasicConfig::getIcons() const {
  return icons_;
}
const util::Option<Config::StartFile>& BasicConfig::getStartFile() const {
  return startFile_;
}
const util::Option<util::LocalizableString>& BasicConfig::getDescription() const {
  return description_;
}
const util::Option<unsigned int>& BasicConfig::getHeight() const {
  return height_;
}
const util::Option<unsigned int>& BasicConfig::getWidth() const {
  return width_;
}
const util::Option<std::string>& BasicConfig::getId() const {
  return id_;
}
const util::Option<Config::License>& BasicConfig::getLicense() const {
  return license_;
}
const util::Option<util::LocalizableString>& BasicConfig::getName() const {
  return name_;
}
const std::vector<Config::Preference>& BasicConfig::getPreferences() const {
  return preferences_;
}
const util::Option<util::LocalizableString>& BasicConfig::getShortName() const {
  return shortName_;
}
const std::vector<std::string>& BasicConfig::getWindowModes() const {
  return windowModes_;
}
const std::vector<std::string>& BasicConfig::getUserAgentLocales() const {
  return userAgentLocales_;
}
const util::Option<util::LocalizableString>& BasicConfig::getVersion() const {
  return version_;
}
const util::Option<std::string>& BasicConfig::getTavloApplicationId() const {
  return tavloApplicationId_;
}
const util::Option<unsigned int>& BasicConfig::getTavloApplicationVersion() const {
  return tavloApplicationVersion_;
}
const std::vector<Config::AccessRequest>& BasicConfig::getAccessRequestList() const {
  return accessRequestList_;
}
const Config::CookieJarSettings& BasicConfig::getCookieJarSettings() const {
  return cookieJarSettings_;
}
const std::int32_t& BasicConfig::getOrvnAuthMode() const {
  return orvnAuthMode_;
}
const Config::NetSettings& BasicConfig::getNetSettings() const {
  return netSettings_;
}
const Config::GestureSettings& BasicConfig::getGestureSettings() const {
  return gestureSettings_;
}
const std::map<std::string, bool>& BasicConfig::getAppPermissions() const {
  return appPermissions_;
}
const std::string& BasicConfig::getChromeSettings() const {
  return chromeSettings_;
}
const Config::AppSettings& BasicConfig::getAppSettings() const {
  return appSettings_;
}
const std::map<std::string, bool>& BasicConfig::getMessagingPermissions() const {
  return messagingPermissions_;
}
const Config::LocalResources& BasicConfig::getLocalResources() const {
  return localResources_;
}
const std::unordered_map<std::string, Config::Export>& BasicConfig::getExports() const {
  return exports_;
}

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

util::Option<Config::Author>& BasicConfig::author() {
  return author_;
}
std::vector<Config::Feature>& BasicConfig::features() {
  return features_;
}
std::vector<Config::Icon>& BasicConfig::icons() {
  return icons_;
}
util::Option<Config::StartFile>& BasicConfig::startFile() {
  return startFile_;
}
util::Option<util::LocalizableString>& BasicConfig::description() {
  return description_;
}
util::Option<unsigned int>& BasicConfig::height() {
  return height_;
}
util::Option<unsigned int>& BasicConfig::width() {
  return width_;
}
util::Option<std::string>& BasicConfig::id() {
  return id_;
}
util::Option<Config::License>& BasicConfig::license() {
  return license_;
}
util::Option<util::LocalizableString>& BasicConfig::name() {
  return name_;
}
std::vector<Config::Preference>& BasicConfig::preferences() {
  return preferences_;
}
util::Option<util::LocalizableString>& BasicConfig::shortName() {
  return shortName_;
}
std::vector<std::string>& BasicConfig::windowModes() {
  return windowModes_;
}
std::vector<std::string>& BasicConfig::userAgentLocales() {
  return userAgentLocales_;
}
util::Option<util::LocalizableString>& BasicConfig::version() {
  return version_;
}
util::Option<std::string>& BasicConfig::tavloApplicationId() {
  return tavloApplicationId_;
}
util::Option<unsigned int>& BasicConfig::tavloApplicationVersion() {
  return tavloApplicationVersion_;
}
std::vector<Config::AccessRequest>& BasicConfig::accessRequestList() {
  return accessRequestList_;
}
Config::CookieJarSettings& BasicConfig::cookieJarSettings() {
  return cookieJarSettings_;
}
std::int32_t& BasicConfig::orvnAuthMode() {
  return orvnAuthMode_;
}
Config::NetSettings& BasicConfig::netSettings() {
  return netSettings_;
}
Config::GestureSettings& BasicConfig::gestureSettings() {
  return gestureSettings_;
}
std::map<std::string, bool>& BasicConfig::appPermissions() {
  return appPermissions_;
}
std::string& BasicConfig::chromeSettings() {
  return chromeSettings_;
}
Config::AppSettings& BasicConfig::appSettings() {
  return appSettings_;
}
std::map<std::string, bool>& BasicConfig::messagingPermissions() {
  return messagingPermissions_;
}
Config::LocalResources& BasicConfig::localResources() {
  return localResources_;
}
std::unordered_map<std::string, Config::Export>& BasicConfig::exports() {
  return exports_;
}
std::shared_ptr<util::XmlDocument>& BasicConfig::document() {
  return document_;
}
std::vector<Element>& BasicConfig::elements() {
  return elements_;
}

}  // namespace orvane::nimbrel::config
