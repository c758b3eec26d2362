#include <algorithm>
#include <optional>
#include <utility>

#include "config/KeyIndex.h"
#include "config/RuleReaders.h"
#include "config/handlers/KnownElement.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

constexpr AttributeDescription ATTRIBUTES[] = {
    {"name", ValueKind::TEXT, true, "preferences[].name"},
    {"value", ValueKind::TEXT, false, "preferences[].value"},
    {"readonly", ValueKind::BOOLEAN, false, "preferences[].readonly"},
};

/// Room for one more. A list that grew by itself would copy the options of those that it has.
void makeRoom(std::vector<Config::Preference>& preferences) {
  if (preferences.size() < preferences.capacity()) {
    return;
  }
  std::vector<Config::Preference> larger;
  larger.reserve(std::max<std::size_t>(4, 2 * preferences.size()));
  for (Config::Preference& preference : preferences) {
    Config::Preference& moved = larger.emplace_back();
    moved.name = std::move(preference.name);
    moved.value.take(std::move(preference.value));
    moved.readonly = preference.readonly;
  }
  preferences.swap(larger);
}

}  // namespace

extern const KnownElement PREFERENCE;
const KnownElement PREFERENCE = {{"preference", false, Repetition::UNIQUE_BY, {"name"}, ATTRIBUTES},
                                 callMember<&NimbrelConfigParser::processPreference>};

}  // namespace detail

void NimbrelConfigParser::processPreference(const std::shared_ptr<util::XmlNode>& node) {
  std::vector<Config::Preference>& preferences = record().preferences();
  util::Option<std::string> name = detail::readAttribute(node, "name");
  const detail::Reporter report = reporterOf(node);
  if (!name || name.get().empty()) {
    return report(FindingCode::MISSING_ATTRIBUTE, "name", name);
  }
  auto* const index = indexes_ == nullptr ? nullptr : &indexes_->preferences;
  if (detail::hasKey(preferences, &Config::Preference::name, name.get(), index)) {
    return report(FindingCode::REPEATED, "name", name);
  }
  const std::optional<bool> readonly = detail::readBooleanAttribute(*node, "readonly", report);
  util::Option<std::string> value = detail::readAttribute(node, "value");
  detail::makeRoom(preferences);
  Config::Preference& preference = preferences.emplace_back();  // whose option would be copied
  preference.name = std::move(name.get());
  preference.value.take(std::move(value));
  preference.readonly = readonly.value_or(false);
}

}  // namespace orvane::nimbrel::config
