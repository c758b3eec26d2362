#include "config/NimbrelConfigParser.h"
#include "config/StreamNumbers.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using internal::ChildRule;
using internal::ExtensionFrame;
using internal::Setting;

constexpr ChildRule RULE = {"setting", "tavlo:settings unknown sub element", "name",
                            "tavlo:settings, missing attributes for tavlo:settings element\n"};
constexpr const char* SITE = "NimbrelConfigParser::processSettings";
constexpr const char* FONT_SIZE = "defaultFontSize";

// Every level bit except the lowest and the top four.
constexpr std::uint32_t DEBUG_LOG_MASK = 0x0FFFFFFE;

using App = Config::AppSettings;

// What a setting does; the error text when its value is no good, else the empty text.
using Effect = std::string (*)(App& settings, const std::string& value);

template <bool App::*FLAG>
std::string raise(App& settings, const std::string& /*value*/) {
  settings.*FLAG = true;
  return {};
}

std::string forgetContext(App& settings, const std::string& /*value*/) {
  settings.saveContext = false;
  return {};
}

/// Switches on the debug lines of the whole process, the one of this setting included.
std::string debug(App& settings, const std::string& /*value*/) {
  settings.debug = true;
  util::setLogMask(DEBUG_LOG_MASK);
  return {};
}

std::string storeFontSize(App& settings, const std::string& value) {
  const int size = internal::extractInt(value, 0);
  if (size < 1) {
    return "Invalid defaultFontSize value : " + value;
  }
  settings.defaultFontSize = size;
  return {};
}

std::string storeMinimumFontSize(App& settings, const std::string& value) {
  const int size = internal::extractInt(value, -1);
  if (size < 0) {
    return "Invalid minimum font size : " + value;
  }
  settings.minimumFontSize = size;
  return {};
}

std::string storeZoomFactor(App& settings, const std::string& value) {
  const float factor = internal::extractFloat(value, 0.0F);
  if (!(factor > 0.0F)) {
    return "Invalid zoom factor";
  }
  settings.zoomFactor = factor;
  return {};
}

// Flags are only ever moved away from their defaults: any value but the trigger word does nothing.
constexpr struct Row {
  std::string_view key;
  const char* trigger;  // null: any value
  Effect effect;
} NAMES[] = {
    {"internetRequired", "yes", raise<&App::internetRequired>},
    {"screenReaderSupported", "yes", raise<&App::screenReaderSupported>},
    {"pelloWebViewParserSupported", "yes", raise<&App::pelloWebViewParserSupported>},
    {"saveContext", "no", forgetContext},
    {"debug", "yes", debug},
    {"enforce96DPI", "yes", raise<&App::enforce96DPI>},
    {"flattenFrames", "yes", raise<&App::flattenFrames>},
    {FONT_SIZE, nullptr, storeFontSize},  // while none is stored, or by the key of the density
    {"minimumFontSize", nullptr, storeMinimumFontSize},
    {"zoomFactor", nullptr, storeZoomFactor},
    {"disable-zel-features", "yes", raise<&App::disableZelFeatures>},
    {"enableW3CStd", "yes", raise<&App::enableW3CStd>},
    {"inspector", "yes", raise<&App::inspector>},
};

/// The key of the font size for this device's screen, such as "defaultFontSize300"; the plain key
/// when the device does not tell its density.
std::string densityKey() {
  int status = 0;
  const int density = corvel_get_int("screen", "dpi", &status, 0);
  return status == 0 ? FONT_SIZE + std::to_string(density) : std::string(FONT_SIZE);
}

/// The row that a name stands for. The key of the density always counts, the plain one only while
/// no size is stored; so a size for the density wins wherever it stands.
const Row* rowOf(const std::string& name, const std::string& densityName, const App& settings) {
  if (name == densityName) {
    return internal::findRow(NAMES, FONT_SIZE);
  }
  if (name == FONT_SIZE && settings.defaultFontSize != 0) {
    return nullptr;
  }
  return internal::findRow(NAMES, name);
}

}  // namespace

bool NimbrelConfigParser::processSettings(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr || config == nullptr) {
    return false;
  }
  App& settings = config->appSettings();
  const std::string densityName = densityKey();
  return ExtensionFrame(*this, rules)
      .forEachSetting(*node, RULE, [&](const Setting& setting, const util::XmlNode& /*child*/) {
        const std::string& value = setting.valueText();
        const Row* const row = rowOf(setting.keyText(), densityName, settings);
        if (row != nullptr && (row->trigger == nullptr || value == row->trigger)) {
          const std::string error = row->effect(settings, value);
          if (!error.empty()) {
            setError(error);
          }
        }
        internal::logNameValue(SITE, setting);
      });
}

}  // namespace orvane::nimbrel::config
