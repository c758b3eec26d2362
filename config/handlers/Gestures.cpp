#include "config/NimbrelConfigParser.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using detail::ChildRule;
using detail::ExtensionFrame;
using detail::Report;
using detail::Setting;

// The second text is the one of the network element, on purpose: hosts know it as it is.
constexpr ChildRule RULE = {"param", "Invalid gesture's param format", "name",
                            "tavlo:network, missing attributes for tavlo:asset element"};
constexpr const char* SITE = "NimbrelConfigParser::processGestures";

using Gestures = Config::GestureSettings;

constexpr detail::Words ENABLING = {
    {"yes", "yes"}, {"no", "no"}, "Only \"yes\" switches the gesture on."};

constexpr struct Row {
  std::string_view key;
  Config::Gesture Gestures::*gesture;
} NAMES[] = {
    {"pinchzoom", &Gestures::pinchzoom},
    {"flick", &Gestures::flick},
    {"drag", &Gestures::drag},
    {"swipe", &Gestures::swipe},
    {"tap", &Gestures::tap},
    {"multi_tap", &Gestures::multi_tap},
    {"hold", &Gestures::hold},
};

}  // namespace

bool NimbrelConfigParser::processGestures(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr || config == nullptr) {
    return false;
  }
  // Each element starts with all gestures off, their properties kept.
  Gestures& gestures = config->gestureSettings();
  bool restarted = false;
  for (const Row& row : NAMES) {
    restarted |= (gestures.*row.gesture).enabled;
    (gestures.*row.gesture).enabled = false;
  }
  if (restarted) {
    Report(observation.get(), node.get())(LegacyCode::SETTINGS_RESTARTED,
                                          "It switches off the gestures of an earlier one.");
  }
  return ExtensionFrame(*this, rules, observation.get())
      .forEachSetting(*node, RULE, [&](const Setting& setting, const Report& lost) {
        const util::Option<std::string> properties =
            rules.getSingleAttributeValue(setting.element, nullptr, "properties");
        const Row* const row = detail::findRow(NAMES, setting.keyText());
        if (row == nullptr) {
          detail::reportUnknownKey(NAMES, "name", setting.keyText(), lost);
        } else if (detail::isOn(ENABLING, setting.valueText(), lost)) {
          Config::Gesture& gesture = gestures.*row->gesture;
          gesture.enabled = true;
          if (properties) {
            gesture.properties = properties.get();
          }
        } else if ((gestures.*row->gesture).enabled) {
          lost(LegacyCode::REPEATED_KEY, "value", setting.value,
               "A gesture once switched on stays so.");
        }
        NIMBREL_LOG_DEBUG(SITE, "name = %s, value = %s, properties = %s", setting.key.c_str(),
                          setting.value.c_str(), properties.c_str());
      });
}

}  // namespace orvane::nimbrel::config
