#include <utility>

#include "config/handlers/Elements.h"

namespace orvane::nimbrel::config::detail {
namespace {

constexpr AttributeDescription ATTRIBUTES[] = {
    optionalAttribute("short", ValueKind::TEXT, "shortName"),
};

bool handle(HandlerContext& context, const Node& node) {
  BasicConfig& record = context.record;
  if (record.name()) {
    return context.readerOf(*node).report(FindingCode::REPEATED);
  }
  record.name() = context.rules.getTextContent(node, true);
  record.shortName() =
      context.rules.getSingleDisplayableAttributeValue(node, nullptr, ATTRIBUTES[0].name.data());
  return true;
}

}  // namespace

const KnownElement NAME =
    w3cElement("name", Repetition::FIRST_COUNTS, handle, NO_MEMBER, ATTRIBUTES, "name");

}  // namespace orvane::nimbrel::config::detail
