#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config::detail {
namespace auth {

constexpr ErrorTexts TEXTS = {"tavlo:auth is missing tavlo:asset element ",
                              "tavlo:auth, missing attributes for tavlo:asset element"};
constexpr const char* SITE = "NimbrelConfigParser::processAuth";
constexpr std::int32_t TOKEN_AUTHENTICATION = 1;

constexpr ChildDescription CHILDREN[] = {{"asset", KEY_AND_VALUE, "key"}};

// Only the value counts, whatever the key.
constexpr SwitchWords TOKEN_WORD = {{"token", "token"}, {}};
constexpr KeyDescription ANY_KEY = {ANY_NAME, ValueKind::SWITCH, KeyRule::ONLY_RAISED,
                                    "orvnAuthMode", &TOKEN_WORD};

static bool handle(HandlerContext& context, const Node& node) {
  bool allKnown = true;
  const auto apply = [&](const Setting& setting) {
    logKeyValue(SITE, setting);
    if (setting.isTriggered(TOKEN_WORD)) {
      context.record.orvnAuthMode() = TOKEN_AUTHENTICATION;
    } else {
      // Without its first letter on purpose: hosts know the text as it is.
      context.errorText = "nvalid certification key: ";
      allKnown = false;
    }
  };
  return forEachSetting(context, *node, CHILDREN[0], TEXTS, apply) && allKnown;
}

}  // namespace auth

const KnownElement AUTH = extensionElement("auth", Repetition::ADDS, auth::handle, NO_MEMBER,
                                           auth::CHILDREN, NO_KEYS, &auth::ANY_KEY);

}  // namespace orvane::nimbrel::config::detail
