#include <utility>

#include "config/handlers/Elements.h"

namespace orvane::nimbrel::config::detail {
namespace license {

constexpr AttributeDescription ATTRIBUTES[] = {
    optionalAttribute("href", ValueKind::IRI, "href"),
};

static bool handle(HandlerContext& context, const Node& node) {
  const ElementReader reader = context.readerOf(*node);
  util::Option<Config::License>& license = context.record.license();
  if (license) {
    return reader.report(FindingCode::REPEATED);
  }
  Config::License read;
  read.text = context.rules.getTextContent(node, false);
  read.href = context.readIri(reader, ATTRIBUTES[0]);
  license = std::move(read);
  return true;
}

}  // namespace license

const KnownElement LICENSE = w3cElement("license", Repetition::FIRST_COUNTS, license::handle,
                                        "license", license::ATTRIBUTES, "text");

}  // namespace orvane::nimbrel::config::detail
