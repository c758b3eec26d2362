#include <optional>
#include <utility>

#include "config/handlers/Elements.h"

namespace orvane::nimbrel::config::detail {
namespace access {

enum : std::uint8_t { ORIGIN, SUBDOMAINS };
constexpr AttributeDescription ATTRIBUTES[] = {
    neededAttribute("origin", ValueKind::ORIGIN, "host"),
    optionalAttribute("subdomains", ValueKind::BOOLEAN, "subdomains"),
};

/// Only scheme, host and port make an origin, not even a final slash.
static bool isOrigin(const util::IRI& iri) noexcept {
  return iri.hasHost && !iri.hasUserInfo && !iri.hasPath && !iri.hasQuery && !iri.hasFragment;
}

/// The port of an origin; nothing when it names none and its scheme has no default. Deliberately,
/// any scheme will do with a port.
static std::optional<std::uint16_t> portOf(const util::IRI& iri) noexcept {
  if (iri.port >= 0) {
    return static_cast<std::uint16_t>(iri.port);
  }
  if (iri.scheme == "http") {
    return 80;
  }
  return iri.scheme == "https" ? std::optional<std::uint16_t>(443) : std::nullopt;
}

static bool handle(HandlerContext& context, const Node& node) {
  const ElementReader reader = context.readerOf(*node);
  const util::Option<std::string> origin = reader.presentText(ATTRIBUTES[ORIGIN]);
  if (!origin) {
    return false;
  }
  const auto reject = [&] {
    return reader.report(FindingCode::NOT_AN_ORIGIN, ATTRIBUTES[ORIGIN], origin);
  };
  Config::AccessRequest request;
  if (origin == "*") {
    request.allOrigins = 1;
  } else {
    util::Option<util::IRI>& iri = context.idIri;
    if (!context.iriParser.tryParse(origin.c_str(), iri) || !iri || !isOrigin(iri.get())) {
      return reject();
    }
    if (node->attributeView(ATTRIBUTES[SUBDOMAINS].name).data() != nullptr) {
      const std::optional<bool> wanted = reader.boolean(ATTRIBUTES[SUBDOMAINS]);
      if (!wanted) {
        return false;
      }
      request.subdomains = *wanted;
    }
    const std::optional<std::uint16_t> port = portOf(iri.get());
    if (!port || !context.idnConverter.tryConvertToASCII(iri.get().host.c_str(), request.host)) {
      return reject();
    }
    request.scheme = iri.get().scheme;
    request.port = *port;
  }
  request.element = std::make_shared<Element>(node, context.rules);
  append(context.record.accessRequestList(), std::move(request));
  return true;
}

}  // namespace access

const KnownElement ACCESS = w3cElement("access", Repetition::ADDS, access::handle,
                                       "accessRequestList[]", access::ATTRIBUTES);

}  // namespace orvane::nimbrel::config::detail
