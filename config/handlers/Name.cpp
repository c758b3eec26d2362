#include <utility>

#include "config/handlers/Elements.h"

namespace orvane::nimbrel::config::detail {
namespace name {

constexpr AttributeDescription ATTRIBUTES[] = {
    optionalAttribute("short", ValueKind::TEXT, "shortName"),
};

static bool handle(HandlerContext& context, const Node& node) {
  BasicConfig& record = context.record;
  if (record.name()) {
    return context.readerOf(*node).report(FindingCode::REPEATED);
  }
  record.name() = context.rules.getTextContent(node, true);
  record.shortName() =
      context.rules.getSingleDisplayableAttributeValue(node, nullptr, ATTRIBUTES[0].name.data());
  return true;
}

}  // namespace name

const KnownElement NAME =
    w3cElement("name", Repetition::FIRST_COUNTS, name::handle, NO_MEMBER, name::ATTRIBUTES, "name");

}  // namespace orvane::nimbrel::config::detail
