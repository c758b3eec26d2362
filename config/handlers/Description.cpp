#include "config/handlers/KnownElement.h"

namespace orvane::nimbrel::config {
namespace detail {
extern const KnownElement DESCRIPTION;
const KnownElement DESCRIPTION = {
    {"description", false, Repetition::FIRST_COUNTS, {}, {}, "description"},
    callMember<&NimbrelConfigParser::processDescription>};

}  // namespace detail

void NimbrelConfigParser::processDescription(const std::shared_ptr<util::XmlNode>& node) {
  BasicConfig& target = record();
  if (target.description()) {
    return reporterOf(node)(FindingCode::REPEATED);
  }
  target.description() = rules.getTextContent(node, false);
}

}  // namespace orvane::nimbrel::config
