#include <utility>

#include "config/handlers/KnownElement.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

constexpr AttributeDescription ATTRIBUTES[] = {
    {"short", ValueKind::TEXT, false, "shortName"},
};

}  // namespace

extern const KnownElement NAME;
const KnownElement NAME = {{"name", false, Repetition::FIRST_COUNTS, {}, ATTRIBUTES, "name"},
                           callMember<&NimbrelConfigParser::processName>};

}  // namespace detail

void NimbrelConfigParser::processName(const std::shared_ptr<util::XmlNode>& node) {
  BasicConfig& target = record();
  if (target.name()) {
    return reporterOf(node)(FindingCode::REPEATED);
  }
  // Both or none: a name without its short name would be taken for complete.
  util::LocalizableString name = rules.getTextContent(node, true);
  target.shortName() = rules.getSingleDisplayableAttributeValue(node, nullptr, "short");
  target.name() = std::move(name);
}

}  // namespace orvane::nimbrel::config
