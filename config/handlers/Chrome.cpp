#include "config/NimbrelConfigParser.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using detail::ChildRule;
using detail::ExtensionFrame;
using detail::Report;
using detail::Setting;

constexpr ChildRule RULE = {"asset", "tavlo:chrome unknown sub element", "key",
                            "tavlo:chrome, missing attributes for tavlo:asset element"};
constexpr const char* SITE = "NimbrelConfigParser::processChrome";

constexpr struct Row { std::string_view key; } KEYS[] = {{"configureSearchBar"}};

}  // namespace

bool NimbrelConfigParser::processChrome(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr || config == nullptr) {
    return false;
  }
  // Each element starts again from the default.
  std::string& searchBar = config->chromeSettings();
  if (searchBar != "system") {
    Report(observation.get(), node.get())(LegacyCode::SETTINGS_RESTARTED,
                                          "It puts aside what an earlier one set.");
  }
  searchBar = "system";
  return ExtensionFrame(*this, rules, observation.get())
      .forEachSetting(*node, RULE, [&](const Setting& setting, const Report& lost) {
        if (detail::findRow(KEYS, setting.keyText()) != nullptr) {
          lost.ifRepeated("key", setting.keyText(), "The later value replaces the earlier one.");
          searchBar = setting.valueText();
        } else {
          detail::reportUnknownKey(KEYS, "key", setting.keyText(), lost);
        }
        detail::logKeyValue(SITE, setting);
      });
}

}  // namespace orvane::nimbrel::config
