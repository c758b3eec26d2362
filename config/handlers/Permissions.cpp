#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

constexpr ErrorTexts TEXTS = {
    "Invalid permissions param format",
    "tavlo:permission, missing attribute name for tavlo:permission element"};
constexpr const char* SITE = "NimbrelConfigParser::processPermissions";

constexpr AttributeDescription ATTRIBUTES[] = {{"name", ValueKind::TEXT, true},
                                               {"value", ValueKind::TEXT}};
constexpr ChildDescription CHILDREN[] = {{"permission", ATTRIBUTES, "name"}};

// Granted but for these words; messaging is the other way round on purpose.
constexpr SwitchWords REVOKING = {{"no", "false"}, {"yes", "true"}};
constexpr KeyDescription ANY_NAME = {
    {}, ValueKind::SWITCH, KeyRule::LAST_COUNTS, "appPermissions.*", &REVOKING};

bool handle(const HandlerContext& context, const std::shared_ptr<util::XmlNode>& node) {
  std::map<std::string, bool>& permissions = context.record.appPermissions();
  return ExtensionFrame(context, TEXTS)
      .forEachSetting(*node, CHILDREN[0], [&](const Setting& setting) {
        const bool allowed = !setting.value || !setting.isTriggered(REVOKING);
        permissions[setting.keyText()] = allowed;
        NIMBREL_LOG_DEBUG(SITE, "name = %s, allowed = %d", setting.key.c_str(), allowed ? 1 : 0);
      });
}

}  // namespace

extern const KnownElement PERMISSIONS;
const KnownElement PERMISSIONS = {
    {"permissions", true, Repetition::ADDS, {}, {}, {}, CHILDREN, {}, &ANY_NAME}, handle};

}  // namespace detail

bool NimbrelConfigParser::processPermissions(const std::shared_ptr<util::XmlNode>& node) {
  return processExtension(node, detail::PERMISSIONS);
}

}  // namespace orvane::nimbrel::config
