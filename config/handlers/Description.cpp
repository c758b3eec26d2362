#include "config/handlers/Elements.h"

namespace orvane::nimbrel::config::detail {
namespace description {

static bool handle(HandlerContext& context, const Node& node) {
  util::Option<util::LocalizableString>& description = context.record.description();
  if (description) {
    return context.readerOf(*node).report(FindingCode::REPEATED);
  }
  description = context.rules.getTextContent(node, false);
  return true;
}

}  // namespace description

const KnownElement DESCRIPTION =
    w3cElement("description", Repetition::FIRST_COUNTS, description::handle, NO_MEMBER,
               NO_ATTRIBUTES, "description");

}  // namespace orvane::nimbrel::config::detail
