#include <optional>
#include <string_view>
#include <utility>

#include "config/NimbrelConfigParser.h"
#include "config/RuleReaders.h"

namespace orvane::nimbrel::config {
namespace {

constexpr struct {
  std::string_view scheme;
  std::uint16_t port;
} DEFAULT_PORTS[] = {{"http", 80}, {"https", 443}};

/// Only scheme, host and port make an origin.
bool isOrigin(const util::IRI& iri) noexcept {
  return iri.hasHost && !iri.hasUserInfo && !iri.hasPath && !iri.hasQuery && !iri.hasFragment;
}

/// The port of an origin; nothing when it names none and its scheme has no default. Deliberately,
/// any scheme will do with a port, and without one only these two, as written.
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
  if (!origin) {
    return;
  }
  Config::AccessRequest request;
  if (origin == "*") {
    request.allOrigins = 1;
  } else {
    if (!iriParser->tryParse(origin.get().c_str(), idIri) || !idIri || !isOrigin(idIri.get())) {
      return;
    }
    const std::string_view subdomains = internal::trimmedAttribute(*node, "subdomains");
    if (subdomains.data() != nullptr) {
      const std::optional<bool> wanted = internal::readBoolean(subdomains);
      if (!wanted) {
        return;
      }
      request.subdomains = *wanted;
    }
    const util::IRI& iri = idIri.get();
    const std::optional<std::uint16_t> port = portOf(iri);
    if (!port || !idnConverter->tryConvertToASCII(iri.host.c_str(), request.host)) {
      return;
    }
    request.scheme = iri.scheme;
    request.port = *port;
  }
  request.element = std::make_shared<Element>(node, rules);
  requests.push_back(std::move(request));
}

}  // namespace orvane::nimbrel::config
