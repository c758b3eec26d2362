#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config::detail {
namespace permissions {

constexpr ErrorTexts TEXTS = {
    "Invalid permissions param format",
    "tavlo:permission, missing attribute name for tavlo:permission element"};
constexpr const char* SITE = "NimbrelConfigParser::processPermissions";

constexpr AttributeDescription ATTRIBUTES[] = {neededAttribute("name", ValueKind::TEXT),
                                               optionalAttribute("value", ValueKind::TEXT)};
constexpr ChildDescription CHILDREN[] = {{"permission", ATTRIBUTES, "name"}};

// Granted but for these words; messaging is the other way round on purpose.
constexpr SwitchWords REVOKING = {{"no", "false"}, {"yes", "true"}};
constexpr KeyDescription ANY_PERMISSION = {ANY_NAME, ValueKind::SWITCH, KeyRule::LAST_COUNTS, "*",
                                           &REVOKING};

static bool handle(HandlerContext& context, const Node& node) {
  std::map<std::string, bool>& permissions = context.record.appPermissions();
  return forEachSetting(context, *node, CHILDREN[0], TEXTS, [&](const Setting& setting) {
    const bool allowed = !setting.value || !setting.isTriggered(REVOKING);
    permissions[setting.keyText()] = allowed;
    NIMBREL_LOG_DEBUG(SITE, "name = %s, allowed = %d", setting.key.c_str(), allowed ? 1 : 0);
  });
}

}  // namespace permissions

const KnownElement PERMISSIONS =
    extensionElement("permissions", Repetition::ADDS, permissions::handle, "appPermissions",
                     permissions::CHILDREN, NO_KEYS, &permissions::ANY_PERMISSION);

}  // namespace orvane::nimbrel::config::detail
