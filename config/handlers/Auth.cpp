#include "config/NimbrelConfigParser.h"
#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace {

using detail::ChildRule;
using detail::ExtensionFrame;
using detail::Report;
using detail::Setting;

constexpr ChildRule RULE = {"asset", "tavlo:auth is missing tavlo:asset element ", "key",
                            "tavlo:auth, missing attributes for tavlo:asset element"};
constexpr const char* SITE = "NimbrelConfigParser::processAuth";
constexpr std::int32_t TOKEN_AUTHENTICATION = 1;

}  // namespace

bool NimbrelConfigParser::processAuth(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr || config == nullptr) {
    return false;
  }
  std::int32_t& mode = config->orvnAuthMode();
  bool allKnown = true;
  const bool complete =
      ExtensionFrame(*this, rules, observation.get())
          .forEachSetting(*node, RULE, [&](const Setting& setting, const Report& lost) {
            detail::logKeyValue(SITE, setting);
            // Only the value counts, whatever the key.
            if (setting.valueText() == "token") {
              mode = TOKEN_AUTHENTICATION;
            } else {
              // Without its first letter on purpose: hosts know the text as it is.
              setError("nvalid certification key: ");
              lost(LegacyCode::UNKNOWN_WORD, "value", setting.value,
                   "Only \"token\" is known; the error text tells of it.");
              allKnown = false;
            }
          });
  return complete && allKnown;
}

}  // namespace orvane::nimbrel::config
