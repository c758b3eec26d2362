#include "config/handlers/KeyTable.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

constexpr ErrorTexts TEXTS = {"tavlo:chrome unknown sub element",
                              "tavlo:chrome, missing attributes for tavlo:asset element"};
constexpr const char* SITE = "NimbrelConfigParser::processChrome";

constexpr ChildDescription CHILDREN[] = {{"asset", KEY_AND_VALUE, "key"}};

constexpr KeyTable KEYS({KeyRow<std::string>{
    {"configureSearchBar", ValueKind::TEXT, KeyRule::LAST_COUNTS, "chromeSettings"},
    [](std::string& searchBar, const KeyDescription& /*key*/, const Setting& setting) {
      searchBar = setting.valueText();
    }}});

bool handle(const HandlerContext& context, const std::shared_ptr<util::XmlNode>& node) {
  // Each element starts again from the default.
  std::string& searchBar = context.record.chromeSettings();
  searchBar = "system";
  return ExtensionFrame(context, TEXTS)
      .forEachSetting(*node, CHILDREN[0], [&](const Setting& setting) {
        KEYS.applyOrReport(searchBar, setting);
        logKeyValue(SITE, setting);
      });
}

}  // namespace

extern const KnownElement CHROME;
const KnownElement CHROME = {
    {"chrome", true, Repetition::RESTARTS, {}, {}, {}, CHILDREN, KEYS.descriptions()}, handle};

}  // namespace detail

bool NimbrelConfigParser::processChrome(const std::shared_ptr<util::XmlNode>& node) {
  return processExtension(node, detail::CHROME);
}

}  // namespace orvane::nimbrel::config
