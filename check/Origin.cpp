#include "check/Origin.h"

#include <algorithm>
#include <string_view>

#include "util/Ascii.h"
#include "util/IDNConverter.h"
#include "util/IRI.h"
#include "util/IRIParser.h"
#include "util/Option.h"

namespace orvane::nimbrel::check {
namespace {

using util::IRI;

constexpr std::string_view SCHEME_END = "://";
constexpr unsigned int MAX_PORT = 65535;

util::Option<IRI> parse(const std::string& text) {
  util::Option<IRI> iri;
  if (!util::IRIParser().tryParse(text.c_str(), iri)) {
    iri.reset();
  }
  return iri;
}

bool hasMore(const IRI& iri) noexcept {
  return iri.hasUserInfo || iri.hasPath || iri.hasQuery || iri.hasFragment;
}

std::string schemeOf(const IRI& iri) {
  return util::ascii::lowerCased(std::string(iri.scheme));
}

/// Scheme, host and port, if the parser takes them.
std::string originOf(const IRI& iri) {
  const std::string scheme = schemeOf(iri);
  const bool hasPort = iri.port >= 0 || scheme == "http" || scheme == "https";
  std::string ascii;
  if (iri.hasUserInfo || !hasPort ||
      !util::IDNConverter().tryConvertToASCII(iri.host.c_str(), ascii)) {
    return {};
  }
  return scheme + std::string(SCHEME_END) + iri.host +
         (iri.port >= 0 ? ":" + std::to_string(iri.port) : "");
}

/// Whether an origin is an IRI but for its port.
bool isPortWrong(const std::string& origin) {
  const std::size_t host = origin.find(SCHEME_END);
  const std::size_t colon = origin.rfind(':');
  if (host == std::string::npos || colon == host) {
    return false;
  }
  const std::string_view port = std::string_view(origin).substr(colon + 1);
  const bool isNumber = !port.empty() && port.size() < 6 &&
                        std::all_of(port.begin(), port.end(), util::ascii::isDigit);
  return !(isNumber && std::stoul(std::string(port)) <= MAX_PORT) && parse(origin.substr(0, colon));
}

Advice adviceOnText(const std::string& origin) {
  if (origin.find(' ') != std::string::npos) {
    return {"Write an element for each origin", ""};
  }
  if (isPortWrong(origin)) {
    return {"The port must be a number up to 65535", ""};
  }
  const std::string meant = "https://" + origin;
  const util::Option<IRI> iri = parse(meant);
  const bool isHost = iri && iri.get().hasHost && !hasMore(iri.get()) &&
                      !originOf(iri.get()).empty() && origin.find('.') != std::string::npos;
  return {"Must be \"*\", or scheme, host and port", isHost ? meant : ""};
}

}  // namespace

Advice adviceOnOrigin(const std::string& origin) {
  const util::Option<IRI> parsed = parse(origin);
  if (!parsed) {
    return adviceOnText(origin);
  }
  const IRI& iri = parsed.get();
  if (!iri.hasHost || iri.host.empty()) {
    // "maps.example:8080" reads as the scheme "maps.example".
    const Advice advice = adviceOnText(origin);
    return {"An origin needs a host", advice.suggestion};
  }
  if (iri.host.substr(0, 2) == "*.") {
    return {"Write subdomains=\"true\" instead of a wildcard",
            iri.scheme + std::string(SCHEME_END) + iri.host.substr(2)};
  }
  if (iri.host.find_first_of(",;") != std::string::npos ||
      origin.find(SCHEME_END) != origin.rfind(SCHEME_END)) {
    return {"Write an element for each origin", ""};
  }
  if (hasMore(iri)) {
    return {"Only scheme, host and port are allowed, without a final slash", originOf(iri), true};
  }
  if (iri.port < 0 && schemeOf(iri) != iri.scheme) {
    return {"The scheme must be in lower case", originOf(iri), true};
  }
  if (iri.port < 0 && iri.scheme != "http" && iri.scheme != "https") {
    return {"A port is needed, unless the scheme is \"http\" or \"https\"", ""};
  }
  return {"The host is not a valid domain name", ""};
}

}  // namespace orvane::nimbrel::check
