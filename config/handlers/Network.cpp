#include "config/NimbrelConfigParser.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using internal::ChildRule;
using internal::ExtensionFrame;
using internal::Report;
using internal::Setting;

constexpr ChildRule RULE = {"asset", "tavlo:network unknown sub element",
                            "key",   "tavlo:network, missing attributes for tavlo:asset element",
                            true,    "errorPage"};
constexpr const char* SITE = "NimbrelConfigParser::processNetwork";

constexpr const char* REPLACED = "The later value replaces the earlier one.";

using Net = Config::NetSettings;

// Lists accumulate, all else is last-wins.
constexpr struct Row {
  std::string_view key;
  internal::Effect<Net> effect;
  bool accumulates = false;
} KEYS[] = {
    {"user-agent", internal::appendText<Net, &Net::userAgents>, true},
    {"http-header", internal::appendText<Net, &Net::httpHeaders>, true},
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
  const ExtensionFrame frame(*this, rules, observation.get());

  const auto act = [&](const Setting& setting, const Report& lost) {
    internal::logKeyValue(SITE, setting);
    const Row* const row = internal::findRow(KEYS, setting.keyText());
    if (row == nullptr) {
      return internal::reportUnknownKey(KEYS, "key", setting.keyText(), lost);
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
