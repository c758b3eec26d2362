#include "config/NimbrelConfigParser.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using detail::ChildRule;
using detail::ExtensionFrame;
using detail::Report;
using detail::Setting;

constexpr ChildRule RULE = {"permission", "Invalid permissions param format", "name",
                            "tavlo:permission, missing attribute name for tavlo:permission element",
                            false};
constexpr const char* SITE = "NimbrelConfigParser::processPermissions";
constexpr detail::Words REFUSING = {
    {"no", "false"},
    {"yes", "true"},
    "The permission is granted: only \"no\" and \"false\" refuse it."};

}  // namespace

bool NimbrelConfigParser::processPermissions(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr || config == nullptr) {
    return false;
  }
  std::map<std::string, bool>& permissions = config->appPermissions();
  return ExtensionFrame(*this, rules, observation.get())
      .forEachSetting(*node, RULE, [&](const Setting& setting, const Report& lost) {
        // Granted unless refused in so many words; messaging is the other way round on purpose.
        lost.ifRepeated("name", setting.keyText(), "The later value replaces the earlier one.");
        const bool allowed = !setting.value || !detail::isOn(REFUSING, setting.valueText(), lost);
        permissions[setting.keyText()] = allowed;
        NIMBREL_LOG_DEBUG(SITE, "name = %s, allowed = %d", setting.key.c_str(), allowed ? 1 : 0);
      });
}

}  // namespace orvane::nimbrel::config
