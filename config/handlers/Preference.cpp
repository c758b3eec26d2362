#include <optional>
#include <utility>

#include "config/KeyIndex.h"
#include "config/RuleReaders.h"
#include "config/handlers/KnownElement.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

enum : std::uint8_t { NAME, VALUE, READONLY };
constexpr AttributeDescription ATTRIBUTES[] = {
    {"name", ValueKind::TEXT, true, "preferences[].name"},
    {"value", ValueKind::TEXT, false, "preferences[].value"},
    {"readonly", ValueKind::BOOLEAN, false, "preferences[].readonly"},
};

}  // namespace

extern const KnownElement PREFERENCE;
const KnownElement PREFERENCE = {{"preference", false, Repetition::UNIQUE_BY, {"name"}, ATTRIBUTES},
                                 callMember<&NimbrelConfigParser::processPreference>};

}  // namespace detail

void NimbrelConfigParser::processPreference(const std::shared_ptr<util::XmlNode>& node) {
  std::vector<Config::Preference>& preferences = record().preferences();
  util::Option<std::string> name = detail::readAttribute(node, detail::ATTRIBUTES[detail::NAME]);
  const detail::Reporter report = reporterOf(node);
  if (!name || name.get().empty()) {
    return report(FindingCode::MISSING_ATTRIBUTE, detail::ATTRIBUTES[detail::NAME], name);
  }
  auto* const index = indexes_ == nullptr ? nullptr : &indexes_->preferences;
  if (detail::hasKey(preferences, &Config::Preference::name, name.get(), index)) {
    return report(FindingCode::REPEATED, detail::ATTRIBUTES[detail::NAME], name);
  }
  const std::optional<bool> readonly =
      detail::readBooleanAttribute(*node, detail::ATTRIBUTES[detail::READONLY], report);
  preferences.push_back({std::move(name.get()),
                         detail::readAttribute(node, detail::ATTRIBUTES[detail::VALUE]),
                         readonly.value_or(false)});
}

}  // namespace orvane::nimbrel::config
