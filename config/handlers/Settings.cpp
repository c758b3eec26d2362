#include <algorithm>

#include "config/StreamNumbers.h"
#include "config/handlers/KeyTable.h"
#include "util/Ascii.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

using App = Config::AppSettings;

constexpr ErrorTexts TEXTS = {"tavlo:settings unknown sub element",
                              "tavlo:settings, missing attributes for tavlo:settings element\n"};
constexpr const char* SITE = "NimbrelConfigParser::processSettings";
constexpr std::string_view FONT_SIZE = "defaultFontSize";

// Every level bit except the lowest and the top four.
constexpr std::uint32_t DEBUG_LOG_MASK = 0x0FFFFFFE;

constexpr ChildDescription CHILDREN[] = {{"setting", NAME_AND_VALUE, "name"}};

/// A value is ignored because it is out of range.
void ignore(const Setting& setting, const std::string& error) {
  setting.context.parser.setError(error);
  setting.report(FindingCode::OUT_OF_RANGE, setting.valueAttribute(), setting.value);
}

/// Switches on the debug lines of the whole process, the one of this setting included.
void debug(App& settings, const KeyDescription& key, const Setting& setting) {
  if (setting.isTriggered(*key.words)) {
    settings.debug = true;
    util::setLogMask(DEBUG_LOG_MASK);
  } else if (settings.debug) {
    setting.report(FindingCode::REPEATED, setting.valueAttribute(), setting.value);
  }
}

void storeFontSize(App& settings, const KeyDescription& /*key*/, const Setting& setting) {
  const int size = readStreamed(setting.valueText(), 0);
  if (size < 1) {
    return ignore(setting, "Invalid defaultFontSize value : " + setting.valueText());
  }
  settings.defaultFontSize = size;
}

void storeMinimumFontSize(App& settings, const KeyDescription& /*key*/, const Setting& setting) {
  const int size = readStreamed(setting.valueText(), -1);
  if (size < 0) {
    return ignore(setting, "Invalid minimum font size : " + setting.valueText());
  }
  settings.minimumFontSize = size;
}

void storeZoomFactor(App& settings, const KeyDescription& /*key*/, const Setting& setting) {
  const float factor = readStreamed(setting.valueText(), 0.0F);
  if (!(factor > 0.0F)) {
    return ignore(setting, "Invalid zoom factor");
  }
  settings.zoomFactor = factor;
}

constexpr KeyTable KEYS({
    raises<&App::internetRequired>("internetRequired", "appSettings.internetRequired", YES_WORD),
    raises<&App::screenReaderSupported>("screenReaderSupported",
                                        "appSettings.screenReaderSupported", YES_WORD),
    raises<&App::pelloWebViewParserSupported>("pelloWebViewParserSupported",
                                              "appSettings.pelloWebViewParserSupported", YES_WORD),
    raises<&App::saveContext, false>("saveContext", "appSettings.saveContext", NO_WORD),
    {{"debug", ValueKind::SWITCH, KeyRule::ONLY_RAISED, "appSettings.debug", &YES_WORD}, debug},
    raises<&App::enforce96DPI>("enforce96DPI", "appSettings.enforce96DPI", YES_WORD),
    raises<&App::flattenFrames>("flattenFrames", "appSettings.flattenFrames", YES_WORD),
    // While none is stored, or by the key of the density.
    {{FONT_SIZE, ValueKind::INTEGER, KeyRule::LAST_COUNTS, "appSettings.defaultFontSize", nullptr,
      true},
     storeFontSize},
    {{"minimumFontSize", ValueKind::INTEGER, KeyRule::LAST_COUNTS, "appSettings.minimumFontSize"},
     storeMinimumFontSize},
    {{"zoomFactor", ValueKind::DECIMAL, KeyRule::LAST_COUNTS, "appSettings.zoomFactor"},
     storeZoomFactor},
    raises<&App::disableZelFeatures>("disable-zel-features", "appSettings.disableZelFeatures",
                                     YES_WORD),
    raises<&App::enableW3CStd>("enableW3CStd", "appSettings.enableW3CStd", YES_WORD),
    raises<&App::inspector>("inspector", "appSettings.inspector", YES_WORD),
});

/// The key of the font size for this device's screen, such as "defaultFontSize300"; the plain key
/// when the device does not tell its density.
std::string densityKey() {
  int status = 0;
  const int density = corvel_get_int("screen", "dpi", &status, 0);
  return std::string(FONT_SIZE) + (status == 0 ? std::to_string(density) : std::string());
}

/// Whether a name is that of a font size for the density of some screen.
bool isForDensity(std::string_view name) {
  return name.size() > FONT_SIZE.size() && name.substr(0, FONT_SIZE.size()) == FONT_SIZE &&
         std::all_of(name.begin() + FONT_SIZE.size(), name.end(),
                     [](char c) { return util::ascii::isDigit(c) || c == '-'; });
}

/// The key of the density always counts, the plain one only while no size is stored; so a size for
/// the density wins wherever it stands.
void apply(App& settings, std::string_view densityName, const Setting& setting) {
  const std::string_view name = setting.keyText();
  if (name == densityName) {
    KEYS.apply(FONT_SIZE, settings, setting);
  } else if (name == FONT_SIZE && settings.defaultFontSize != 0) {
    setting.report(FindingCode::UNUSED_SETTING, setting.keyAttribute(), name);
  } else if (!isForDensity(name)) {
    KEYS.applyOrReport(settings, setting);
  }
}

bool handle(const HandlerContext& context, const std::shared_ptr<util::XmlNode>& node) {
  App& settings = context.record.appSettings();
  const std::string densityName = densityKey();
  return ExtensionFrame(context, TEXTS)
      .forEachSetting(*node, CHILDREN[0], [&](const Setting& setting) {
        apply(settings, densityName, setting);
        logNameValue(SITE, setting);
      });
}

}  // namespace

extern const KnownElement SETTINGS;
const KnownElement SETTINGS = {
    {"settings", true, Repetition::ADDS, {}, {}, {}, CHILDREN, KEYS.descriptions()}, handle};

}  // namespace detail

bool NimbrelConfigParser::processSettings(const std::shared_ptr<util::XmlNode>& node) {
  return processExtension(node, detail::SETTINGS);
}

}  // namespace orvane::nimbrel::config
