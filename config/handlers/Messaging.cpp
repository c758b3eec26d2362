#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

constexpr ErrorTexts TEXTS = {"tavlo:messaging unknown sub element",
                              "tavlo:messaging, missing attributes for tavlo:messaging element"};
constexpr const char* SITE = "NimbrelConfigParser::processMessaging";

constexpr ChildDescription CHILDREN[] = {{"app", NAME_AND_VALUE, "name"}};

// Denied but for these words; permissions are the other way round on purpose.
constexpr SwitchWords GRANTING = {{"yes", "true"}, {"no", "false"}};
constexpr KeyDescription ANY_NAME = {
    {}, ValueKind::SWITCH, KeyRule::LAST_COUNTS, "messagingPermissions.*", &GRANTING};

bool handle(const HandlerContext& context, const std::shared_ptr<util::XmlNode>& node) {
  std::map<std::string, bool>& permissions = context.record.messagingPermissions();
  return ExtensionFrame(context, TEXTS)
      .forEachSetting(*node, CHILDREN[0], [&](const Setting& setting) {
        permissions[setting.keyText()] = setting.isTriggered(GRANTING);
        logNameValue(SITE, setting);
      });
}

}  // namespace

extern const KnownElement MESSAGING;
const KnownElement MESSAGING = {
    {"messaging", true, Repetition::ADDS, {}, {}, {}, CHILDREN, {}, &ANY_NAME}, handle};

}  // namespace detail

bool NimbrelConfigParser::processMessaging(const std::shared_ptr<util::XmlNode>& node) {
  return processExtension(node, detail::MESSAGING);
}

}  // namespace orvane::nimbrel::config
