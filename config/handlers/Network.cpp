#include "config/handlers/KeyTable.h"

namespace orvane::nimbrel::config::detail {
namespace network {

using Net = Config::NetSettings;

constexpr ErrorTexts TEXTS = {"tavlo:network unknown sub element",
                              "tavlo:network, missing attributes for tavlo:asset element"};
constexpr const char* SITE = "NimbrelConfigParser::processNetwork";

constexpr AttributeDescription ERROR_PAGE_ATTRIBUTES[] = {
    neededAttribute("src", ValueKind::PATH, "errorPage")};
constexpr ChildDescription CHILDREN[] = {{"asset", KEY_AND_VALUE, "key"},
                                         {"errorPage", ERROR_PAGE_ATTRIBUTES}};
constexpr const AttributeDescription& ERROR_PAGE_SRC = ERROR_PAGE_ATTRIBUTES[0];
constexpr const ChildDescription& ASSET = CHILDREN[0];
constexpr const ChildDescription& ERROR_PAGE = CHILDREN[1];

constexpr KeyTable KEYS({
    appendsText<&Net::userAgents>("user-agent", "userAgents[]"),
    appendsText<&Net::httpHeaders>("http-header", "httpHeaders[]"),
    storesNumber<&Net::idleConnectionsTimeout_sec>("idleConnectionsTimeout_sec"),
    storesNumber<&Net::maxConnections>("maxConnections"),
    storesNumber<&Net::maxConnectionsPerHost>("maxConnectionsPerHost"),
    storesNumber<&Net::maxConnectionsPerProxy>("maxConnectionsPerProxy"),
    storesNumber<&Net::maxKeepAliveProxyConnections>("maxKeepAliveProxyConnections"),
    storesSwitch<&Net::initialDNS, TRUE_WORD>("initialDNS"),
    storesText<&Net::overrideProxy>("overrideProxy"),
    storesSwitch<&Net::enableCaching, TRUE_WORD>("enableCaching"),
    storesSwitch<&Net::enableWrsProxy, TRUE_WORD>("enableWrsProxy"),
    storesSwitch<&Net::allowTlsFallback, TRUE_WORD>("allowTlsFallback"),
});

static bool handle(HandlerContext& context, const Node& node) {
  Net& net = context.record.netSettings();
  const auto apply = [&](const Setting& setting) {
    logKeyValue(SITE, setting);
    KEYS.applyOrReport(net, setting);
  };
  const auto storeErrorPage = [&](const util::XmlNode& child) {
    const ElementReader reader = context.readerOf(child);
    const util::Option<std::string> src = reader.text(ERROR_PAGE_SRC);
    if (!src) {
      return stopAtAttribute(context, reader, ERROR_PAGE_SRC,
                             "tavlo:network, missing 'src' attribute for tavlo:errorPage element");
    }
    net.errorPage = src.get();
    NIMBREL_LOG_DEBUG(SITE, "src = %s", net.errorPage.c_str());
    return true;
  };
  return forEachChild(*node, [&](const util::XmlNode& child) {
    if (isA(ASSET, child)) {
      return withSetting(context, child, ASSET, TEXTS, apply);
    }
    return isA(ERROR_PAGE, child) ? storeErrorPage(child)
                                  : stopAtElement(context, child, TEXTS.wrongElement);
  });
}

}  // namespace network

const KnownElement NETWORK = extensionElement("network", Repetition::ADDS, network::handle,
                                              "netSettings", network::CHILDREN, network::KEYS);

}  // namespace orvane::nimbrel::config::detail
