#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "config/Api.h"
#include "config/Config.h"
#include "config/Element.h"
#include "util/LocalizableString.h"
#include "util/Option.h"
#include "util/SharedPtr.h"
#include "util/XmlDocument.h"

namespace orvane::nimbrel::config {

/// The concrete record: plain data that the parser fills. It validates nothing.
///
/// It owns every member; kept elements share the document. Copyable: an assignment that throws
/// leaves a usable record, some of whose fields are the new ones (basic guarantee). Const members
/// may run on several threads at once while nobody changes it.
class NIMBREL_CONFIG_API BasicConfig : public Config {
 public:
  /// A record with the defaults that `Config` names.
  BasicConfig();
  BasicConfig(const BasicConfig&);
  BasicConfig& operator=(const BasicConfig&);
  ~BasicConfig() override;

  [[nodiscard]] const util::Option<Author>& getAuthor() const override;
  [[nodiscard]] const std::vector<Feature>& getFeatures() const override;
  [[nodiscard]] const std::vector<Icon>& getIcons() const override;
  [[nodiscard]] const util::Option<StartFile>& getStartFile() const override;
  [[nodiscard]] const util::Option<util::LocalizableString>& getDescription() const override;
  [[nodiscard]] const util::Option<unsigned int>& getHeight() const override;
  [[nodiscard]] const util::Option<unsigned int>& getWidth() const override;
  [[nodiscard]] const util::Option<std::string>& getId() const override;
  [[nodiscard]] const util::Option<License>& getLicense() const override;
  [[nodiscard]] const util::Option<util::LocalizableString>& getName() const override;
  [[nodiscard]] const std::vector<Preference>& getPreferences() const override;
  [[nodiscard]] const util::Option<util::LocalizableString>& getShortName() const override;
  [[nodiscard]] const std::vector<std::string>& getWindowModes() const override;
  [[nodiscard]] const std::vector<std::string>& getUserAgentLocales() const override;
  [[nodiscard]] const util::Option<util::LocalizableString>& getVersion() const override;
  [[nodiscard]] const util::Option<std::string>& getTavloApplicationId() const override;
  [[nodiscard]] const util::Option<unsigned int>& getTavloApplicationVersion() const override;
  [[nodiscard]] const std::vector<AccessRequest>& getAccessRequestList() const override;
  std::vector<const Element*> getElements(const char* name,
                                          const char* namespaceUri) const override;
  [[nodiscard]] const CookieJarSettings& getCookieJarSettings() const override;
  [[nodiscard]] const std::int32_t& getOrvnAuthMode() const override;
  [[nodiscard]] const NetSettings& getNetSettings() const override;
  [[nodiscard]] const GestureSettings& getGestureSettings() const override;
  [[nodiscard]] const std::map<std::string, bool>& getAppPermissions() const override;
  [[nodiscard]] const std::string& getChromeSettings() const override;
  [[nodiscard]] const AppSettings& getAppSettings() const override;
  [[nodiscard]] const std::map<std::string, bool>& getMessagingPermissions() const override;
  [[nodiscard]] const LocalResources& getLocalResources() const override;
  [[nodiscard]] const std::unordered_map<std::string, Export>& getExports() const override;

  /// @name Mutable access, one for each field of the record
  /// @{
  /// The field that the reading operation of the same name reads.
  virtual util::Option<Author>& author();
  virtual std::vector<Feature>& features();
  virtual std::vector<Icon>& icons();
  virtual util::Option<StartFile>& startFile();
  virtual util::Option<util::LocalizableString>& description();
  virtual util::Option<unsigned int>& height();
  virtual util::Option<unsigned int>& width();
  virtual util::Option<std::string>& id();
  virtual util::Option<License>& license();
  virtual util::Option<util::LocalizableString>& name();
  virtual std::vector<Preference>& preferences();
  virtual util::Option<util::LocalizableString>& shortName();
  virtual std::vector<std::string>& windowModes();
  virtual std::vector<std::string>& userAgentLocales();
  virtual util::Option<util::LocalizableString>& version();
  virtual util::Option<std::string>& tavloApplicationId();
  virtual util::Option<unsigned int>& tavloApplicationVersion();
  virtual std::vector<AccessRequest>& accessRequestList();
  virtual CookieJarSettings& cookieJarSettings();
  virtual std::int32_t& orvnAuthMode();
  virtual NetSettings& netSettings();
  virtual GestureSettings& gestureSettings();
  virtual std::map<std::string, bool>& appPermissions();
  virtual std::string& chromeSettings();
  virtual AppSettings& appSettings();
  virtual std::map<std::string, bool>& messagingPermissions();
  virtual LocalResources& localResources();
  virtual std::unordered_map<std::string, Export>& exports();
  /// The parsed document, which lives as long as the record; null before a parse.
  std::shared_ptr<util::XmlDocument>& document();
  /// Every element that the parser visited, in that order, whatever its name.
  std::vector<Element>& elements();
  /// @}

 private:
  std::shared_ptr<util::XmlDocument> document_;
  std::vector<Element> elements_;
  util::Option<Author> author_;
  std::vector<Feature> features_;
  std::vector<Icon> icons_;
  util::Option<StartFile> startFile_;
  util::Option<util::LocalizableString> description_;
  util::Option<unsigned int> height_;
  util::Option<unsigned int> width_;
  util::Option<std::string> id_;
  util::Option<License> license_;
  util::Option<util::LocalizableString> name_;
  std::vector<Preference> preferences_;
  util::Option<util::LocalizableString> shortName_;
  std::vector<std::string> windowModes_;
  std::vector<std::string> userAgentLocales_;
  util::Option<util::LocalizableString> version_;
  util::Option<std::string> tavloApplicationId_;
  util::Option<unsigned int> tavloApplicationVersion_;
  std::vector<AccessRequest> accessRequestList_;
  CookieJarSettings cookieJarSettings_;
  std::int32_t orvnAuthMode_ = 0;
  NetSettings netSettings_;
  GestureSettings gestureSettings_;
  std::map<std::string, bool> appPermissions_;
  std::string chromeSettings_ = "system";
  AppSettings appSettings_;
  std::map<std::string, bool> messagingPermissions_;
  LocalResources localResources_;
  std::unordered_map<std::string, Export> exports_;
};

}  // namespace orvane::nimbrel::config
