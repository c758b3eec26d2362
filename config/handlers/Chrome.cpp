#include "config/handlers/KeyTable.h"

namespace orvane::nimbrel::config::detail {
namespace chrome {

constexpr ErrorTexts TEXTS = {"tavlo:chrome unknown sub element",
                              "tavlo:chrome, missing attributes for tavlo:asset element"};
constexpr const char* SITE = "NimbrelConfigParser::processChrome";

constexpr ChildDescription CHILDREN[] = {{"asset", KEY_AND_VALUE, "key"}};

constexpr KeyTable KEYS({KeyRow<std::string>{
    {"configureSearchBar", ValueKind::TEXT, KeyRule::LAST_COUNTS, "chromeSettings"},
    [](std::string& searchBar, const Setting& setting) { searchBar = setting.valueText(); }}});

static bool handle(HandlerContext& context, const Node& node) {
  // Each element starts again from the default.
  std::string& searchBar = context.record.chromeSettings();
  searchBar = "system";
  return forEachSetting(context, *node, CHILDREN[0], TEXTS, [&](const Setting& setting) {
    KEYS.applyOrReport(searchBar, setting);
    logKeyValue(SITE, setting);
  });
}

}  // namespace chrome

const KnownElement CHROME = extensionElement("chrome", Repetition::RESTARTS, chrome::handle,
                                             NO_MEMBER, chrome::CHILDREN, chrome::KEYS);

}  // namespace orvane::nimbrel::config::detail
