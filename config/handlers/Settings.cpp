#include <algorithm>

#include "config/ExtractNumber.h"
#include "config/handlers/KeyTable.h"
#include "util/Ascii.h"

namespace orvane::nimbrel::config::detail {
namespace settings {

using App = Config::AppSettings;

constexpr ErrorTexts TEXTS = {"tavlo:settings unknown sub element",
                              "tavlo:settings, missing attributes for tavlo:settings element\n"};
constexpr const char* SITE = "NimbrelConfigParser::processSettings";
constexpr std::string_view FONT_SIZE = "defaultFontSize";

// Every level bit except the lowest and the top four.
constexpr std::uint32_t DEBUG_LOG_MASK = 0x0FFFFFFE;

constexpr ChildDescription CHILDREN[] = {{"setting", NAME_AND_VALUE, "name"}};

/// A value is ignored because it is out of range.
static void ignore(const Setting& setting, const std::string& error) {
  setting.context.errorText = error;
  setting.reportValue(FindingCode::OUT_OF_RANGE);
}

/// Switches on the debug lines of the whole process, the one of this setting included.
static void debug(App& settings, const Setting& setting) {
  if (setting.isTriggered(YES_WORD)) {
    settings.debug = true;
    util::setLogMask(DEBUG_LOG_MASK);
  } else if (settings.debug) {
    setting.reportValue(FindingCode::REPEATED);
  }
}

static void storeFontSize(App& settings, const Setting& setting) {
  const int size = extractNumber(setting.valueText(), 0);
  if (size < 1) {
    return ignore(setting, "Invalid defaultFontSize value : " + setting.valueText());
  }
  settings.defaultFontSize = size;
}

static void storeMinimumFontSize(App& settings, const Setting& setting) {
  const int size = extractNumber(setting.valueText(), -1);
  if (size < 0) {
    return ignore(setting, "Invalid minimum font size : " + setting.valueText());
  }
  settings.minimumFontSize = size;
}

static void storeZoomFactor(App& settings, const Setting& setting) {
  const float factor = extractNumber(setting.valueText(), 0.0F);
  if (!(factor > 0.0F)) {
    return ignore(setting, "Invalid zoom factor");
  }
  settings.zoomFactor = factor;
}

/// The size for the density of a screen, or that for any screen while none is stored.
constexpr KeyDescription fontSizes() noexcept {
  KeyDescription sizes = {FONT_SIZE, ValueKind::INTEGER, KeyRule::LAST_COUNTS, FONT_SIZE};
  sizes.hasDensityVariants = true;
  return sizes;
}

constexpr KeyTable KEYS({
    raises<&App::internetRequired, YES_WORD>("internetRequired"),
    raises<&App::screenReaderSupported, YES_WORD>("screenReaderSupported"),
    raises<&App::pelloWebViewParserSupported, YES_WORD>("pelloWebViewParserSupported"),
    raises<&App::saveContext, NO_WORD, false>("saveContext"),
    {{"debug", ValueKind::SWITCH, KeyRule::ONLY_RAISED, "debug", &YES_WORD}, debug},
    raises<&App::enforce96DPI, YES_WORD>("enforce96DPI"),
    raises<&App::flattenFrames, YES_WORD>("flattenFrames"),
    {fontSizes(), storeFontSize},
    {{"minimumFontSize", ValueKind::INTEGER, KeyRule::LAST_COUNTS, "minimumFontSize"},
     storeMinimumFontSize},
    {{"zoomFactor", ValueKind::DECIMAL, KeyRule::LAST_COUNTS, "zoomFactor"}, storeZoomFactor},
    raises<&App::disableZelFeatures, YES_WORD>("disable-zel-features", "disableZelFeatures"),
    raises<&App::enableW3CStd, YES_WORD>("enableW3CStd"),
    raises<&App::inspector, YES_WORD>("inspector"),
});

/// The key of the font size for this device's screen, such as "defaultFontSize300"; the plain key
/// when the device does not tell its density.
static std::string densityKey() {
  int status = 0;
  const int density = corvel_get_int("screen", "dpi", &status, 0);
  return std::string(FONT_SIZE) + (status == 0 ? std::to_string(density) : std::string());
}

/// Whether a name is that of a font size for the density of some screen.
static bool isForDensity(std::string_view name) {
  return name.size() > FONT_SIZE.size() && name.substr(0, FONT_SIZE.size()) == FONT_SIZE &&
         std::all_of(name.begin() + FONT_SIZE.size(), name.end(),
                     [](char c) { return util::ascii::isDigit(c) || c == '-'; });
}

/// The key of the density always counts, the plain one only while no size is stored; so a size for
/// the density wins wherever it stands.
static void apply(App& settings, std::string_view densityName, const Setting& setting) {
  const std::string_view name = setting.keyText();
  if (name == densityName) {
    KEYS.apply(FONT_SIZE, settings, setting);
  } else if (name == FONT_SIZE && settings.defaultFontSize != 0) {
    setting.reportKey(FindingCode::UNUSED_SETTING);
  } else if (!isForDensity(name)) {
    KEYS.applyOrReport(settings, setting);
  }
}

static bool handle(HandlerContext& context, const Node& node) {
  App& settings = context.record.appSettings();
  const std::string densityName = densityKey();
  return forEachSetting(context, *node, CHILDREN[0], TEXTS, [&](const Setting& setting) {
    apply(settings, densityName, setting);
    logNameValue(SITE, setting);
  });
}

}  // namespace settings

const KnownElement SETTINGS = extensionElement("settings", Repetition::ADDS, settings::handle,
                                               "appSettings", settings::CHILDREN, settings::KEYS);

}  // namespace orvane::nimbrel::config::detail
