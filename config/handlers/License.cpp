#include <utility>

#include "config/handlers/KnownElement.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

enum : std::uint8_t { HREF };
constexpr AttributeDescription ATTRIBUTES[] = {
    {"href", ValueKind::IRI, false, "license.href"},
};

}  // namespace

extern const KnownElement LICENSE;
const KnownElement LICENSE = {
    {"license", false, Repetition::FIRST_COUNTS, {}, ATTRIBUTES, "license.text"},
    callMember<&NimbrelConfigParser::processLicense>};

}  // namespace detail

void NimbrelConfigParser::processLicense(const std::shared_ptr<util::XmlNode>& node) {
  BasicConfig& target = record();
  if (target.license()) {
    return reporterOf(node)(FindingCode::REPEATED);
  }
  util::LocalizableString text = rules.getTextContent(node, false);
  util::Option<std::string> href = readIri(node, detail::ATTRIBUTES[detail::HREF]);
  Config::License& license = target.license().emplace();
  license.text = std::move(text);
  license.href = std::move(href);
}

}  // namespace orvane::nimbrel::config
