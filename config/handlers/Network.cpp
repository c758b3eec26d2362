#include "config/NimbrelConfigParser.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using internal::ChildRule;
using internal::ExtensionFrame;
using internal::Setting;

constexpr ChildRule RULE = {"asset", "tavlo:network unknown sub element", "key",
                            "tavlo:network, missing attributes for tavlo:asset element"};
constexpr const char* SITE = "NimbrelConfigParser::processNetwork";

using Net = Config::NetSettings;

// Lists accumulate, all else is last-wins.
constexpr struct Row {
  std::string_view key;
  internal::Effect<Net> effect;
} KEYS[] = {
    {"user-agent", internal::appendText<Net, &Net::userAgents>},
    {"http-header", internal::appendText<Net, &Net::httpHeaders>},
    {"idleConnectionsTimeout_sec", internal::storeNumber<Net, &Net::idleConnectionsTimeout_sec>},
    {"maxConnections", internal::storeNumber<Net, &Net::maxConnections>},
    {"maxConnectionsPerHost", internal::storeNumber<Net, &Net::maxConnectionsPerHost>},
    {"maxConnectionsPerProxy", internal::storeNumber<Net, &Net::maxConnectionsPerProxy>},
    {"maxKeepAliveProxyConnections",
     internal::storeNumber<Net, &Net::maxKeepAliveProxyConnections>},
    {"initialDNS", internal::storeWhetherTrue<Net, &Net::initialDNS>},
    {"overrideProxy", internal::storeText<Net, &Net::overrideProxy>},
    {"enableCaching", internal::storeWhetherTrue<Net, &Net::enableCaching>},
    {"enableWrsProxy", internal::storeWhetherTrue<Net, &Net::enableWrsProxy>},
    {"allowTlsFallback", internal::storeWhetherTrue<Net, &Net::allowTlsFallback>},
};

}  // namespace

bool NimbrelConfigParser::processNetwork(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr || config == nullptr) {
    return false;
  }
  Net& net = config->netSettings();
  const ExtensionFrame frame(*this, rules);

  const auto act = [&](const Setting& setting, const util::XmlNode& /*child*/) {
    internal::logKeyValue(SITE, setting);
    const Row* const row = internal::findRow(KEYS, setting.keyText());
    if (row != nullptr) {
      row->effect(net, setting.valueText(), rules);
    }
  };
  const auto storeErrorPage = [&](const util::XmlNode& child) {
    const util::Option<std::string> src = rules.getSingleAttributeValue(child, nullptr, "src");
    if (!src) {
      return frame.stop("tavlo:network, missing 'src' attribute for tavlo:errorPage element");
    }
    net.errorPage = src.get();
    NIMBREL_LOG_DEBUG(SITE, "src = %s", net.errorPage.c_str());
    return true;
  };
  return frame.forEachChild(*node, [&](const util::XmlNode& child) {
    if (frame.is(child, RULE.element)) {
      return frame.withSetting(child, RULE, act);
    }
    return frame.is(child, "errorPage") ? storeErrorPage(child) : frame.stop(RULE.wrongElement);
  });
}

}  // namespace orvane::nimbrel::config
