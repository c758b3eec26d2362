#include "config/NimbrelConfigParser.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using internal::ChildRule;
using internal::ExtensionFrame;
using internal::Setting;

constexpr ChildRule RULE = {"app", "tavlo:messaging unknown sub element", "name",
                            "tavlo:messaging, missing attributes for tavlo:messaging element"};
constexpr const char* SITE = "NimbrelConfigParser::processMessaging";

}  // namespace

bool NimbrelConfigParser::processMessaging(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr || config == nullptr) {
    return false;
  }
  std::map<std::string, bool>& permissions = config->messagingPermissions();
  return ExtensionFrame(*this, rules)
      .forEachSetting(*node, RULE, [&](const Setting& setting, const util::XmlNode& /*child*/) {
        // Refused unless granted in so many words; permissions are the other way round on purpose.
        permissions[setting.keyText()] = setting.value == "yes" || setting.value == "true";
        internal::logNameValue(SITE, setting);
      });
}

}  // namespace orvane::nimbrel::config
