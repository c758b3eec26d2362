#include <optional>
#include <string_view>
#include <utility>

#include "config/RuleReaders.h"
#include "config/handlers/KnownElement.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

enum : std::uint8_t { ORIGIN, SUBDOMAINS };
constexpr AttributeDescription ATTRIBUTES[] = {
    {"origin", ValueKind::ORIGIN, true, "accessRequestList[]"},
    {"subdomains", ValueKind::BOOLEAN, false, "accessRequestList[].subdomains"},
};

constexpr struct {
  std::string_view scheme;
  std::uint16_t port;
} DEFAULT_PORTS[] = {{"http", 80}, {"https", 443}};

/// Only scheme, host and port make an origin, not even a final slash.
bool isOrigin(const util::IRI& iri) noexcept {
  return iri.hasHost && !iri.hasUserInfo && !iri.hasPath && !iri.hasQuery && !iri.hasFragment;
}

/// The port of an origin; nothing when it names none and its scheme has no default. Deliberately,
/// any scheme will do with a port.
std::optional<std::uint16_t> portOf(const util::IRI& iri) noexcept {
  if (iri.port >= 0) {
    return static_cast<std::uint16_t>(iri.port);
  }
  for (const auto& row : DEFAULT_PORTS) {
    if (row.scheme == iri.scheme) {
      return row.port;
    }
  }
  return std::nullopt;
}

}  // namespace

extern const KnownElement ACCESS;
const KnownElement ACCESS = {{"access", false, Repetition::ADDS, {}, ATTRIBUTES},
                             callMember<&NimbrelConfigParser::processAccess>};

}  // namespace detail

void NimbrelConfigParser::processAccess(const std::shared_ptr<util::XmlNode>& node) {
  std::vector<Config::AccessRequest>& requests = record().accessRequestList();
  const util::Option<std::string> origin =
      detail::readAttribute(node, detail::ATTRIBUTES[detail::ORIGIN]);
  const detail::Reporter report = reporterOf(node);
  if (!origin) {
    return report(FindingCode::MISSING_ATTRIBUTE, detail::ATTRIBUTES[detail::ORIGIN]);
  }
  Config::AccessRequest request;
  if (origin == "*") {
    request.allOrigins = 1;
  } else {
    if (!iriParser->tryParse(origin.get().c_str(), idIri) || !idIri ||
        !detail::isOrigin(idIri.get())) {
      return report(FindingCode::NOT_AN_ORIGIN, detail::ATTRIBUTES[detail::ORIGIN], origin);
    }
    if (node->attributeView("subdomains").data() != nullptr) {
      const std::optional<bool> wanted =
          detail::readBooleanAttribute(*node, detail::ATTRIBUTES[detail::SUBDOMAINS], report);
      if (!wanted) {
        return;
      }
      request.subdomains = *wanted;
    }
    const util::IRI& iri = idIri.get();
    const std::optional<std::uint16_t> port = detail::portOf(iri);
    if (!port || !idnConverter->tryConvertToASCII(iri.host.c_str(), request.host)) {
      return report(FindingCode::NOT_AN_ORIGIN, detail::ATTRIBUTES[detail::ORIGIN], origin);
    }
    request.scheme = iri.scheme;
    request.port = *port;
  }
  request.element = std::make_shared<Element>(node, rules);
  requests.push_back(std::move(request));
}

}  // namespace orvane::nimbrel::config
