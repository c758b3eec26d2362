#include <optional>
#include <utility>

#include "config/handlers/Elements.h"

namespace orvane::nimbrel::config::detail {
namespace preference {

enum : std::uint8_t { NAME_OF_PREFERENCE, VALUE, READONLY };
constexpr AttributeDescription ATTRIBUTES[] = {
    neededAttribute("name", ValueKind::TEXT, "name"),
    optionalAttribute("value", ValueKind::TEXT, "value"),
    optionalAttribute("readonly", ValueKind::BOOLEAN, "readonly"),
};

static bool handle(HandlerContext& context, const Node& node) {
  const ElementReader reader = context.readerOf(*node);
  util::Option<std::string> name = reader.filledText(ATTRIBUTES[NAME_OF_PREFERENCE]);
  if (!name) {
    return false;
  }
  if (!context.preferences.insert(name.get())) {
    return reader.report(FindingCode::REPEATED, ATTRIBUTES[NAME_OF_PREFERENCE], name);
  }
  util::Option<std::string> value = reader.text(ATTRIBUTES[VALUE]);
  const bool readonly = reader.boolean(ATTRIBUTES[READONLY]).value_or(false);
  append(context.record.preferences(), {std::move(name.get()), std::move(value), readonly});
  return true;
}

}  // namespace preference

const KnownElement PREFERENCE = w3cElement("preference", Repetition::UNIQUE_BY, preference::handle,
                                           "preferences[]", preference::ATTRIBUTES);

}  // namespace orvane::nimbrel::config::detail
