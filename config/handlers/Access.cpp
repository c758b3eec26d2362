#include <optional>
#include <string_view>
#include <utility>

#include "config/NimbrelConfigParser.h"
#include "config/Report.h"
#include "config/RuleReaders.h"

namespace orvane::nimbrel::config {
namespace {

constexpr struct {
  std::string_view scheme;
  std::uint16_t port;
} DEFAULT_PORTS[] = {{"http", 80}, {"https", 443}};

using detail::Report;

bool isOrigin(const util::IRI& iri) noexcept {
  return iri.hasHost && !iri.hasUserInfo && !iri.hasPath && !iri.hasQuery && !iri.hasFragment;
}

void reportNoOrigin(const util::IRI& iri, const std::string& written, const Report& lost) {
  if (!iri.hasHost) {
    return lost(LegacyCode::ORIGIN_WITHOUT_HOST, "origin", written, "An origin has a host.");
  }
  std::string meant;
  if (lost && !iri.hasUserInfo) {
    meant = iri.scheme + "://" + iri.host;
    meant += iri.port >= 0 ? ":" + std::to_string(iri.port) : "";
  }
  lost(LegacyCode::ORIGIN_TOO_LONG, "origin", written,
       "Only scheme, host and port make an origin, without so much as a final slash.", meant);
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

void NimbrelConfigParser::processAccess(const std::shared_ptr<util::XmlNode>& node) {
  std::vector<Config::AccessRequest>& requests = record().accessRequestList();
  const util::Option<std::string> origin = rules.getSingleAttributeValue(node, nullptr, "origin");
  const Report lost(observation.get(), node.get());
  if (!origin) {
    return lost(LegacyCode::ACCESS_WITHOUT_ORIGIN, "origin", origin, "Access needs an origin.");
  }
  Config::AccessRequest request;
  if (origin == "*") {
    request.allOrigins = 1;
    if (lost && node->attributeView("subdomains").data() != nullptr) {
      lost(LegacyCode::SUBDOMAINS_UNUSED, "subdomains", node->attributeView("subdomains"),
           "All origins have all subdomains.");
    }
  } else {
    if (!iriParser->tryParse(origin.get().c_str(), idIri) || !idIri) {
      return lost(LegacyCode::ORIGIN_NOT_IRI, "origin", origin, "An origin is an IRI or \"*\".");
    }
    if (!isOrigin(idIri.get())) {
      return reportNoOrigin(idIri.get(), origin.get(), lost);
    }
    if (node->attributeView("subdomains").data() != nullptr) {
      const std::optional<bool> wanted = detail::readBooleanAttribute(
          *node, "subdomains", lost, "It is left open whom to let in: the request is left out.");
      if (!wanted) {
        return;
      }
      request.subdomains = *wanted;
    }
    const util::IRI& iri = idIri.get();
    const std::optional<std::uint16_t> port = portOf(iri);
    if (!port) {
      return lost(LegacyCode::ORIGIN_WITHOUT_PORT, "origin", origin,
                  "Only \"http\" and \"https\", so written, have a default port.");
    }
    if (!idnConverter->tryConvertToASCII(iri.host.c_str(), request.host)) {
      return lost(LegacyCode::HOST_WITHOUT_ASCII, "origin", origin,
                  "The host has no form that can be looked up.");
    }
    request.scheme = iri.scheme;
    request.port = *port;
  }
  request.element = std::make_shared<Element>(node, rules);
  requests.push_back(std::move(request));
}

}  // namespace orvane::nimbrel::config
