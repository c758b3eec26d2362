#include <optional>
#include <utility>

#include "config/KeyIndex.h"
#include "config/NimbrelConfigParser.h"
#include "config/Report.h"
#include "config/RuleReaders.h"

namespace orvane::nimbrel::config {

void NimbrelConfigParser::processPreference(const std::shared_ptr<util::XmlNode>& node) {
  std::vector<Config::Preference>& preferences = record().preferences();
  util::Option<std::string> name = rules.getSingleAttributeValue(node, nullptr, "name");
  const detail::Report lost(observation.get(), node.get());
  if (!name || name.get().empty()) {
    return lost(LegacyCode::PREFERENCE_WITHOUT_NAME, "name", name, "A preference needs a name.");
  }
  auto* const index = indexes == nullptr ? nullptr : &indexes->preferences;
  if (detail::hasKey(preferences, &Config::Preference::name, name.get(), index)) {
    return lost(LegacyCode::REPEATED_PREFERENCE, "name", name,
                "The first preference of a name wins.");
  }
  const std::optional<bool> readonly =
      detail::readBooleanAttribute(*node, "readonly", lost, "The preference can be written.");
  preferences.push_back(Config::Preference{std::move(name.get()),
                                           rules.getSingleAttributeValue(node, nullptr, "value"),
                                           readonly.value_or(false)});
}

}  // namespace orvane::nimbrel::config
