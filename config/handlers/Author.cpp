#include <utility>

#include "config/handlers/Elements.h"

namespace orvane::nimbrel::config::detail {
namespace author {

enum : std::uint8_t { HREF, EMAIL };
constexpr AttributeDescription ATTRIBUTES[] = {
    optionalAttribute("href", ValueKind::IRI, "href"),
    optionalAttribute("email", ValueKind::TEXT, "email"),
};

static bool handle(HandlerContext& context, const Node& node) {
  const ElementReader reader = context.readerOf(*node);
  util::Option<Config::Author>& author = context.record.author();
  if (author) {
    return reader.report(FindingCode::REPEATED);
  }
  Config::Author read;
  read.href = context.readIri(reader, ATTRIBUTES[HREF]);
  read.email = reader.text(ATTRIBUTES[EMAIL]);
  read.name = context.rules.getTextContent(node, true);
  author = std::move(read);
  return true;
}

}  // namespace author

const KnownElement AUTHOR = w3cElement("author", Repetition::FIRST_COUNTS, author::handle, "author",
                                       author::ATTRIBUTES, "name");

}  // namespace orvane::nimbrel::config::detail
