#include "config/handlers/KeyTable.h"

namespace orvane::nimbrel::config::detail {
namespace gestures {

using Gesture = Config::Gesture;
using Gestures = Config::GestureSettings;

// The second text is the one of the network element, on purpose: hosts know it as it is.
constexpr ErrorTexts TEXTS = {"Invalid gesture's param format",
                              "tavlo:network, missing attributes for tavlo:asset element"};
constexpr const char* SITE = "NimbrelConfigParser::processGestures";

constexpr AttributeDescription ATTRIBUTES[] = {
    neededAttribute("name", ValueKind::TEXT),
    neededAttribute("value", ValueKind::TEXT),
    optionalAttribute("properties", ValueKind::TEXT, "*.properties"),
};
constexpr const AttributeDescription& PROPERTIES = ATTRIBUTES[2];
constexpr ChildDescription CHILDREN[] = {{"param", ATTRIBUTES, "name"}};

template <Gesture Gestures::*GESTURE>
constexpr KeyRow<Gestures> enables(std::string_view key, std::string_view field) {
  return {{key, ValueKind::SWITCH, KeyRule::ONLY_RAISED, field, &YES_WORD},
          [](Gestures& gestures, const Setting& setting) {
            Gesture& gesture = gestures.*GESTURE;
            if (setting.isTriggered(YES_WORD)) {
              gesture.enabled = true;
              const util::Option<std::string> properties = setting.reader.text(PROPERTIES);
              if (properties) {
                gesture.properties = properties.get();
              }
            } else if (gesture.enabled) {
              setting.reportValue(FindingCode::REPEATED);
            }
          }};
}

constexpr KeyTable KEYS({
    enables<&Gestures::pinchzoom>("pinchzoom", "pinchzoom.enabled"),
    enables<&Gestures::flick>("flick", "flick.enabled"),
    enables<&Gestures::drag>("drag", "drag.enabled"),
    enables<&Gestures::swipe>("swipe", "swipe.enabled"),
    enables<&Gestures::tap>("tap", "tap.enabled"),
    enables<&Gestures::multi_tap>("multi_tap", "multi_tap.enabled"),
    enables<&Gestures::hold>("hold", "hold.enabled"),
});

static bool handle(HandlerContext& context, const Node& node) {
  // Each element starts with all gestures off, their properties kept.
  Gestures& gestures = context.record.gestureSettings();
  for (Gesture* const gesture :
       {&gestures.pinchzoom, &gestures.flick, &gestures.drag, &gestures.swipe, &gestures.tap,
        &gestures.multi_tap, &gestures.hold}) {
    gesture->enabled = false;
  }
  return forEachSetting(context, *node, CHILDREN[0], TEXTS, [&](const Setting& setting) {
    KEYS.applyOrReport(gestures, setting);
    NIMBREL_LOG_DEBUG(SITE, "name = %s, value = %s, properties = %s", setting.key.c_str(),
                      setting.value.c_str(), setting.reader.text(PROPERTIES).c_str());
  });
}

}  // namespace gestures

const KnownElement GESTURES =
    extensionElement("gestures", Repetition::RESTARTS, gestures::handle, "gestureSettings",
                     gestures::CHILDREN, gestures::KEYS);

}  // namespace orvane::nimbrel::config::detail
