#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config::detail {
namespace messaging {

constexpr ErrorTexts TEXTS = {"tavlo:messaging unknown sub element",
                              "tavlo:messaging, missing attributes for tavlo:messaging element"};
constexpr const char* SITE = "NimbrelConfigParser::processMessaging";

constexpr ChildDescription CHILDREN[] = {{"app", NAME_AND_VALUE, "name"}};

// Denied but for these words; permissions are the other way round on purpose.
constexpr SwitchWords GRANTING = {{"yes", "true"}, {"no", "false"}};
constexpr KeyDescription ANY_APP = {ANY_NAME, ValueKind::SWITCH, KeyRule::LAST_COUNTS, "*",
                                    &GRANTING};

static bool handle(HandlerContext& context, const Node& node) {
  std::map<std::string, bool>& permissions = context.record.messagingPermissions();
  return forEachSetting(context, *node, CHILDREN[0], TEXTS, [&](const Setting& setting) {
    permissions[setting.keyText()] = setting.isTriggered(GRANTING);
    logNameValue(SITE, setting);
  });
}

}  // namespace messaging

const KnownElement MESSAGING =
    extensionElement("messaging", Repetition::ADDS, messaging::handle, "messagingPermissions",
                     messaging::CHILDREN, NO_KEYS, &messaging::ANY_APP);

}  // namespace orvane::nimbrel::config::detail
