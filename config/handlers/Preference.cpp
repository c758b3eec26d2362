#include <optional>
#include <utility>

#include "config/KeyIndex.h"
#include "config/NimbrelConfigParser.h"
#include "config/RuleReaders.h"

namespace orvane::nimbrel::config {

void NimbrelConfigParser::processPreference(const std::shared_ptr<util::XmlNode>& node) {
  std::vector<Config::Preference>& preferences = record().preferences();
  util::Option<std::string> name = rules.getSingleAttributeValue(node, nullptr, "name");
  if (!name || name.get().empty()) {
    return;
  }
  // The first preference of a name wins.
  internal::KeyIndex* const index = indexes == nullptr ? nullptr : &indexes->preferences;
  if (internal::hasKey(preferences, &Config::Preference::name, name.get(), index)) {
    return;
  }
  const std::optional<bool> readonly =
      internal::readBoolean(internal::trimmedAttribute(*node, "readonly"));
  preferences.push_back(Config::Preference{std::move(name.get()),
                                           rules.getSingleAttributeValue(node, nullptr, "value"),
                                           readonly.value_or(false)});
}

}  // namespace orvane::nimbrel::config
