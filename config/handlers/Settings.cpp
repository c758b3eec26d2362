#include <algorithm>

#include "config/NimbrelConfigParser.h"
#include "config/ReportCut.h"
#include "config/StreamNumbers.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using detail::ChildRule;
using detail::ExtensionFrame;
using detail::Report;
using detail::Setting;

constexpr ChildRule RULE = {"setting", "tavlo:settings unknown sub element", "name",
                            "tavlo:settings, missing attributes for tavlo:settings element\n"};
constexpr const char* SITE = "NimbrelConfigParser::processSettings";
constexpr const char* FONT_SIZE = "defaultFontSize";

// Every level bit except the lowest and the top four.
constexpr std::uint32_t DEBUG_LOG_MASK = 0x0FFFFFFE;

using App = Config::AppSettings;

// What a setting does; the error text when its value is no good, else the empty text.
using Effect = std::string (*)(App& settings, const std::string& value, const Report& lost);

template <bool App::*FLAG>
std::string raise(App& settings, const std::string& /*value*/, const Report& /*lost*/) {
  settings.*FLAG = true;
  return {};
}

std::string forgetContext(App& settings, const std::string& /*value*/, const Report& /*lost*/) {
  settings.saveContext = false;
  return {};
}

/// Switches on the debug lines of the whole process, the one of this setting included.
std::string debug(App& settings, const std::string& /*value*/, const Report& /*lost*/) {
  settings.debug = true;
  util::setLogMask(DEBUG_LOG_MASK);
  return {};
}

std::string storeFontSize(App& settings, const std::string& value, const Report& lost) {
  const int size = detail::readStreamed(value, 0);
  if (size < 1) {
    lost(LegacyCode::VALUE_REFUSED, "value", value, "A font size is at least 1.");
    return "Invalid defaultFontSize value : " + value;
  }
  detail::reportCut(size, "value", value, lost);
  settings.defaultFontSize = size;
  return {};
}

std::string storeMinimumFontSize(App& settings, const std::string& value, const Report& lost) {
  const int size = detail::readStreamed(value, -1);
  if (size < 0) {
    lost(LegacyCode::VALUE_REFUSED, "value", value, "A minimum font size is at least 0.");
    return "Invalid minimum font size : " + value;
  }
  detail::reportCut(size, "value", value, lost);
  settings.minimumFontSize = size;
  return {};
}

std::string storeZoomFactor(App& settings, const std::string& value, const Report& lost) {
  const float factor = detail::readStreamed(value, 0.0F);
  if (!(factor > 0.0F)) {
    lost(LegacyCode::VALUE_REFUSED, "value", value, "A zoom factor is above 0.");
    return "Invalid zoom factor";
  }
  detail::reportCut(factor, "value", value, lost);
  settings.zoomFactor = factor;
  return {};
}

constexpr detail::Words YES = {
    {"yes", "yes"}, {"no", "no"}, "Only \"yes\" has an effect, any other value none."};
constexpr detail::Words NO = {
    {"no", "no"}, {"yes", "yes"}, "Only \"no\" has an effect, any other value none."};

// Flags are only ever moved away from their defaults: any value but the trigger word does nothing.
constexpr struct Row {
  std::string_view key;
  const detail::Words* trigger;  // null: any value
  Effect effect;
} NAMES[] = {
    {"internetRequired", &YES, raise<&App::internetRequired>},
    {"screenReaderSupported", &YES, raise<&App::screenReaderSupported>},
    {"pelloWebViewParserSupported", &YES, raise<&App::pelloWebViewParserSupported>},
    {"saveContext", &NO, forgetContext},
    {"debug", &YES, debug},
    {"enforce96DPI", &YES, raise<&App::enforce96DPI>},
    {"flattenFrames", &YES, raise<&App::flattenFrames>},
    {FONT_SIZE, nullptr, storeFontSize},  // while none is stored, or by the key of the density
    {"minimumFontSize", nullptr, storeMinimumFontSize},
    {"zoomFactor", nullptr, storeZoomFactor},
    {"disable-zel-features", &YES, raise<&App::disableZelFeatures>},
    {"enableW3CStd", &YES, raise<&App::enableW3CStd>},
    {"inspector", &YES, raise<&App::inspector>},
};

/// The key of the font size for this device's screen, such as "defaultFontSize300"; the plain key
/// when the device does not tell its density.
std::string densityKey() {
  int status = 0;
  const int density = corvel_get_int("screen", "dpi", &status, 0);
  return status == 0 ? FONT_SIZE + std::to_string(density) : std::string(FONT_SIZE);
}

/// Whether a name is that of a font size for the density of some screen.
bool isForDensity(std::string_view name) {
  const std::string_view plain = FONT_SIZE;
  return name.size() > plain.size() && name.substr(0, plain.size()) == plain &&
         std::all_of(name.begin() + plain.size(), name.end(),
                     [](char c) { return (c >= '0' && c <= '9') || c == '-'; });
}

/// The row that a name stands for. The key of the density always counts, the plain one only while
/// no size is stored; so a size for the density wins wherever it stands.
const Row* rowOf(const std::string& name, const std::string& densityName, const App& settings,
                 const Report& lost) {
  if (name == densityName) {
    return detail::findRow(NAMES, FONT_SIZE);
  }
  if (name == FONT_SIZE && settings.defaultFontSize != 0) {
    lost(LegacyCode::BETTER_DENSITY, "name", name,
         "A size is stored already, by an earlier setting or one for this screen.");
    return nullptr;
  }
  const Row* const row = detail::findRow(NAMES, name);
  if (row == nullptr && !isForDensity(name)) {
    detail::reportUnknownKey(NAMES, "name", name, lost);
  }
  return row;
}

}  // namespace

bool NimbrelConfigParser::processSettings(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr || config == nullptr) {
    return false;
  }
  App& settings = config->appSettings();
  const std::string densityName = densityKey();
  return ExtensionFrame(*this, rules, observation.get())
      .forEachSetting(*node, RULE, [&](const Setting& setting, const Report& lost) {
        const std::string& value = setting.valueText();
        const Row* const row = rowOf(setting.keyText(), densityName, settings, lost);
        if (row != nullptr) {
          lost.ifRepeated("name", setting.keyText(),
                          row->trigger != nullptr ? "It is thrown if one of them throws it."
                                                  : "The later value replaces the earlier one.");
        }
        if (row != nullptr &&
            (row->trigger == nullptr || detail::isOn(*row->trigger, value, lost))) {
          const std::string error = row->effect(settings, value, lost);
          if (!error.empty()) {
            setError(error);
          }
        }
        detail::logNameValue(SITE, setting);
      });
}

}  // namespace orvane::nimbrel::config
