#include "config/handlers/KeyTable.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

using Net = Config::NetSettings;

constexpr ErrorTexts TEXTS = {"tavlo:network unknown sub element",
                              "tavlo:network, missing attributes for tavlo:asset element"};
constexpr const char* SITE = "NimbrelConfigParser::processNetwork";

constexpr AttributeDescription ERROR_PAGE_ATTRIBUTES[] = {
    {"src", ValueKind::PATH, true, "netSettings.errorPage"}};
constexpr ChildDescription CHILDREN[] = {{"asset", KEY_AND_VALUE, "key"},
                                         {"errorPage", ERROR_PAGE_ATTRIBUTES}};
constexpr const ChildDescription& ASSET = CHILDREN[0];
constexpr const ChildDescription& ERROR_PAGE = CHILDREN[1];

constexpr KeyTable KEYS({
    appendsText<&Net::userAgents>("user-agent", "netSettings.userAgents[]"),
    appendsText<&Net::httpHeaders>("http-header", "netSettings.httpHeaders[]"),
    storesNumber<&Net::idleConnectionsTimeout_sec>("idleConnectionsTimeout_sec",
                                                   "netSettings.idleConnectionsTimeout_sec"),
    storesNumber<&Net::maxConnections>("maxConnections", "netSettings.maxConnections"),
    storesNumber<&Net::maxConnectionsPerHost>("maxConnectionsPerHost",
                                              "netSettings.maxConnectionsPerHost"),
    storesNumber<&Net::maxConnectionsPerProxy>("maxConnectionsPerProxy",
                                               "netSettings.maxConnectionsPerProxy"),
    storesNumber<&Net::maxKeepAliveProxyConnections>("maxKeepAliveProxyConnections",
                                                     "netSettings.maxKeepAliveProxyConnections"),
    storesSwitch<&Net::initialDNS>("initialDNS", "netSettings.initialDNS", TRUE_WORD),
    storesText<&Net::overrideProxy>("overrideProxy", "netSettings.overrideProxy"),
    storesSwitch<&Net::enableCaching>("enableCaching", "netSettings.enableCaching", TRUE_WORD),
    storesSwitch<&Net::enableWrsProxy>("enableWrsProxy", "netSettings.enableWrsProxy", TRUE_WORD),
    storesSwitch<&Net::allowTlsFallback>("allowTlsFallback", "netSettings.allowTlsFallback",
                                         TRUE_WORD),
});

bool handle(const HandlerContext& context, const std::shared_ptr<util::XmlNode>& node) {
  Net& net = context.record.netSettings();
  const ExtensionFrame frame(context, TEXTS);

  const auto apply = [&](const Setting& setting) {
    logKeyValue(SITE, setting);
    KEYS.applyOrReport(net, setting);
  };
  const auto storeErrorPage = [&](const util::XmlNode& child) {
    const util::Option<std::string> src = readAttribute(child, ERROR_PAGE_ATTRIBUTES[0]);
    if (!src) {
      return frame.stopAtAttribute(
          child, "tavlo:network, missing 'src' attribute for tavlo:errorPage element",
          ERROR_PAGE_ATTRIBUTES[0]);
    }
    net.errorPage = src.get();
    NIMBREL_LOG_DEBUG(SITE, "src = %s", net.errorPage.c_str());
    return true;
  };
  return ExtensionFrame::forEachChild(*node, [&](const util::XmlNode& child) {
    if (ExtensionFrame::is(child, ASSET)) {
      return frame.withSetting(child, ASSET, apply);
    }
    return ExtensionFrame::is(child, ERROR_PAGE) ? storeErrorPage(child)
                                                 : frame.stopAtElement(child);
  });
}

}  // namespace

extern const KnownElement NETWORK;
const KnownElement NETWORK = {
    {"network", true, Repetition::ADDS, {}, {}, {}, CHILDREN, KEYS.descriptions()}, handle};

}  // namespace detail

bool NimbrelConfigParser::processNetwork(const std::shared_ptr<util::XmlNode>& node) {
  return processExtension(node, detail::NETWORK);
}

}  // namespace orvane::nimbrel::config
