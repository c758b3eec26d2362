#include <utility>

#include "config/RuleReaders.h"
#include "config/handlers/KnownElement.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

enum : std::uint8_t { HREF, EMAIL };
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
  util::Option<std::string> email = detail::readAttribute(node, detail::ATTRIBUTES[detail::EMAIL]);
  util::Option<std::string> href = readIri(node, detail::ATTRIBUTES[detail::HREF]);
  Config::Author& author = target.author().emplace();
  author.name = std::move(name);
  author.email = std::move(email);
  author.href = std::move(href);
}

}  // namespace orvane::nimbrel::config
