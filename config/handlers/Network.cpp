#include "config/NimbrelConfigParser.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using detail::ChildRule;
using detail::ExtensionFrame;
using detail::Report;
using detail::Setting;

constexpr ChildRule RULE = {"asset", "tavlo:network unknown sub element",
                            "key",   "tavlo:network, missing attributes for tavlo:asset element",
                            true,    "errorPage"};
constexpr const char* SITE = "NimbrelConfigParser::processNetwork";

constexpr const char* REPLACED = "The later value replaces the earlier one.";

using Net = Config::NetSettings;

// Lists accumulate, all else is last-wins.
constexpr struct Row {
  std::string_view key;
  detail::Effect<Net> effect;
  bool accumulates = false;
} KEYS[] = {
    {"user-agent", detail::appendText<Net, &Net::userAgents>, true},
    {"http-header", detail::appendText<Net, &Net::httpHeaders>, true},
    {"idleConnectionsTimeout_sec", detail::storeNumber<Net, &Net::idleConnectionsTimeout_sec>},
    {"maxConnections", detail::storeNumber<Net, &Net::maxConnections>},
    {"maxConnectionsPerHost", detail::storeNumber<Net, &Net::maxConnectionsPerHost>},
    {"maxConnectionsPerProxy", detail::storeNumber<Net, &Net::maxConnectionsPerProxy>},
    {"maxKeepAliveProxyConnections", detail::storeNumber<Net, &Net::maxKeepAliveProxyConnections>},
    {"initialDNS", detail::storeWhetherTrue<Net, &Net::initialDNS>},
    {"overrideProxy", detail::storeText<Net, &Net::overrideProxy>},
    {"enableCaching", detail::storeWhetherTrue<Net, &Net::enableCaching>},
    {"enableWrsProxy", detail::storeWhetherTrue<Net, &Net::enableWrsProxy>},
    {"allowTlsFallback", detail::storeWhetherTrue<Net, &Net::allowTlsFallback>},
};

}  // namespace

bool NimbrelConfigParser::processNetwork(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr || config == nullptr) {
    return false;
  }
  Net& net = config->netSettings();
  const ExtensionFrame frame(*this, rules, observation.get());

  const auto act = [&](const Setting& setting, const Report& lost) {
    detail::logKeyValue(SITE, setting);
    const Row* const row = detail::findRow(KEYS, setting.keyText());
    if (row == nullptr) {
      return detail::reportUnknownKey(KEYS, "key", setting.keyText(), lost);
    }
    if (!row->accumulates) {
      lost.ifRepeated("key", setting.keyText(), REPLACED);
    }
    row->effect(net, setting.valueText(), lost);
  };
  const auto storeErrorPage = [&](const util::XmlNode& child, const Report& lost) {
    frame.examine(child);
    const util::Option<std::string> src = rules.getSingleAttributeValue(child, nullptr, "src");
    if (!src) {
      return frame.stopAtAttribute(
          "tavlo:network, missing 'src' attribute for tavlo:errorPage element", "src", lost);
    }
    lost.ifRepeated("src", RULE.other, REPLACED);
    net.errorPage = src.get();
    NIMBREL_LOG_DEBUG(SITE, "src = %s", net.errorPage.c_str());
    return true;
  };
  return frame.forEachChild(*node, [&](const util::XmlNode& child, const Report& lost) {
    if (frame.is(child, RULE.element)) {
      return frame.withSetting(child, RULE, lost, act);
    }
    return frame.is(child, RULE.other) ? storeErrorPage(child, lost)
                                       : frame.stopAtElement(child, RULE, lost);
  });
}

}  // namespace orvane::nimbrel::config
