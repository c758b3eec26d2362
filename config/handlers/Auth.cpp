#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

constexpr ErrorTexts TEXTS = {"tavlo:auth is missing tavlo:asset element ",
                              "tavlo:auth, missing attributes for tavlo:asset element"};
constexpr const char* SITE = "NimbrelConfigParser::processAuth";
constexpr std::int32_t TOKEN_AUTHENTICATION = 1;

constexpr ChildDescription CHILDREN[] = {{"asset", KEY_AND_VALUE, "key"}};

// Only the value counts, whatever the key.
constexpr SwitchWords TOKEN_WORD = {{"token", "token"}, {}};
constexpr KeyDescription ANY_KEY = {
    {}, ValueKind::SWITCH, KeyRule::ONLY_RAISED, "orvnAuthMode", &TOKEN_WORD};

bool handle(const HandlerContext& context, const std::shared_ptr<util::XmlNode>& node) {
  bool allKnown = true;
  const bool complete = ExtensionFrame(context, TEXTS)
                            .forEachSetting(*node, CHILDREN[0], [&](const Setting& setting) {
                              logKeyValue(SITE, setting);
                              if (setting.isTriggered(TOKEN_WORD)) {
                                context.record.orvnAuthMode() = TOKEN_AUTHENTICATION;
                              } else {
                                // Without its first letter on purpose: hosts know the text as it
                                // is.
                                context.parser.setError("nvalid certification key: ");
                                allKnown = false;
                              }
                            });
  return complete && allKnown;
}

}  // namespace

extern const KnownElement AUTH;
const KnownElement AUTH = {{"auth", true, Repetition::ADDS, {}, {}, {}, CHILDREN, {}, &ANY_KEY},
                           handle};

}  // namespace detail

bool NimbrelConfigParser::processAuth(const std::shared_ptr<util::XmlNode>& node) {
  return processExtension(node, detail::AUTH);
}

}  // namespace orvane::nimbrel::config
