#include "config/NimbrelConfigParser.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using internal::ChildRule;
using internal::ExtensionFrame;
using internal::Setting;

constexpr ChildRule RULE = {"asset", "tavlo:chrome unknown sub element", "key",
                            "tavlo:chrome, missing attributes for tavlo:asset element"};
constexpr const char* SITE = "NimbrelConfigParser::processChrome";

}  // namespace

bool NimbrelConfigParser::processChrome(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr || config == nullptr) {
    return false;
  }
  // Each element starts again from the default.
  std::string& searchBar = config->chromeSettings();
  searchBar = "system";
  return ExtensionFrame(*this, rules)
      .forEachSetting(*node, RULE, [&](const Setting& setting, const util::XmlNode& /*child*/) {
        if (setting.keyText() == "configureSearchBar") {
          searchBar = setting.valueText();
        }
        internal::logKeyValue(SITE, setting);
      });
}

}  // namespace orvane::nimbrel::config
