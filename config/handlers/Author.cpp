#include <utility>

#include "config/handlers/KnownElement.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

constexpr AttributeDescription ATTRIBUTES[] = {
    {"href", ValueKind::IRI, false, "author.href"},
    {"email", ValueKind::TEXT, false, "author.email"},
};

}  // namespace

extern const KnownElement AUTHOR;
const KnownElement AUTHOR = {
    {"author", false, Repetition::FIRST_COUNTS, {}, ATTRIBUTES, "author.name"},
    callMember<&NimbrelConfigParser::processAuthor>};

}  // namespace detail

void NimbrelConfigParser::processAuthor(const std::shared_ptr<util::XmlNode>& node) {
  BasicConfig& target = record();
  if (target.author()) {
    return reporterOf(node)(FindingCode::REPEATED);
  }
  util::LocalizableString name = rules.getTextContent(node, true);
  target.author() = Config::Author{rules.getSingleAttributeValue(node, nullptr, "email"),
                                   readIri(node, "href"), std::move(name)};
}

}  // namespace orvane::nimbrel::config
