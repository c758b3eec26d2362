#include "config/NimbrelConfigParser.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using detail::ChildRule;
using detail::ExtensionFrame;
using detail::Report;
using detail::Setting;

constexpr ChildRule RULE = {"app", "tavlo:messaging unknown sub element", "name",
                            "tavlo:messaging, missing attributes for tavlo:messaging element"};
constexpr const char* SITE = "NimbrelConfigParser::processMessaging";
constexpr detail::Words GRANTING = {{"yes", "true"},
                                    {"no", "false"},
                                    "Messages are refused: only \"yes\" and \"true\" grant them."};

}  // namespace

bool NimbrelConfigParser::processMessaging(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr || config == nullptr) {
    return false;
  }
  std::map<std::string, bool>& permissions = config->messagingPermissions();
  return ExtensionFrame(*this, rules, observation.get())
      .forEachSetting(*node, RULE, [&](const Setting& setting, const Report& lost) {
        // Refused unless granted in so many words; permissions are the other way round on purpose.
        lost.ifRepeated("name", setting.keyText(), "The later value replaces the earlier one.");
        permissions[setting.keyText()] = detail::isOn(GRANTING, setting.valueText(), lost);
        detail::logNameValue(SITE, setting);
      });
}

}  // namespace orvane::nimbrel::config
