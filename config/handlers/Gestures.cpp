#include "config/handlers/KeyTable.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

using Gesture = Config::Gesture;
using Gestures = Config::GestureSettings;

// The second text is the one of the network element, on purpose: hosts know it as it is.
constexpr ErrorTexts TEXTS = {"Invalid gesture's param format",
                              "tavlo:network, missing attributes for tavlo:asset element"};
constexpr const char* SITE = "NimbrelConfigParser::processGestures";

constexpr AttributeDescription ATTRIBUTES[] = {
    {"name", ValueKind::TEXT, true},
    {"value", ValueKind::TEXT, true},
    {"properties", ValueKind::TEXT, false, "gestureSettings.*.properties"}};
constexpr ChildDescription CHILDREN[] = {{"param", ATTRIBUTES, "name"}};

template <Gesture Gestures::*GESTURE>
constexpr KeyRow<Gestures> enables(std::string_view name, std::string_view field) {
  return {{name, ValueKind::SWITCH, KeyRule::ONLY_RAISED, field, &YES_WORD},
          [](Gestures& gestures, const KeyDescription& key, const Setting& setting) {
            Gesture& gesture = gestures.*GESTURE;
            if (setting.isTriggered(*key.words)) {
              gesture.enabled = true;
              const util::Option<std::string> properties =
                  readAttribute(setting.element, ATTRIBUTES[2]);
              if (properties) {
                gesture.properties = properties.get();
              }
            } else if (gesture.enabled) {
              setting.report(FindingCode::REPEATED, setting.valueAttribute(), setting.value);
            }
          }};
}

constexpr KeyTable KEYS({
    enables<&Gestures::pinchzoom>("pinchzoom", "gestureSettings.pinchzoom.enabled"),
    enables<&Gestures::flick>("flick", "gestureSettings.flick.enabled"),
    enables<&Gestures::drag>("drag", "gestureSettings.drag.enabled"),
    enables<&Gestures::swipe>("swipe", "gestureSettings.swipe.enabled"),
    enables<&Gestures::tap>("tap", "gestureSettings.tap.enabled"),
    enables<&Gestures::multi_tap>("multi_tap", "gestureSettings.multi_tap.enabled"),
    enables<&Gestures::hold>("hold", "gestureSettings.hold.enabled"),
});

bool handle(const HandlerContext& context, const std::shared_ptr<util::XmlNode>& node) {
  // Each element starts with all gestures off, their properties kept.
  Gestures& gestures = context.record.gestureSettings();
  for (Gesture* const gesture :
       {&gestures.pinchzoom, &gestures.flick, &gestures.drag, &gestures.swipe, &gestures.tap,
        &gestures.multi_tap, &gestures.hold}) {
    gesture->enabled = false;
  }
  return ExtensionFrame(context, TEXTS)
      .forEachSetting(*node, CHILDREN[0], [&](const Setting& setting) {
        KEYS.applyOrReport(gestures, setting);
        NIMBREL_LOG_DEBUG(SITE, "name = %s, value = %s, properties = %s", setting.key.c_str(),
                          setting.value.c_str(),
                          readAttribute(setting.element, ATTRIBUTES[2]).c_str());
      });
}

}  // namespace

extern const KnownElement GESTURES;
const KnownElement GESTURES = {
    {"gestures", true, Repetition::RESTARTS, {}, {}, {}, CHILDREN, KEYS.descriptions()}, handle};

}  // namespace detail

bool NimbrelConfigParser::processGestures(const std::shared_ptr<util::XmlNode>& node) {
  return processExtension(node, detail::GESTURES);
}

}  // namespace orvane::nimbrel::config
