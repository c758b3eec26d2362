// Taking identifiers apart without libsoup, but by its rules: directories on devices have the names
// that come out. GLib's own GUri gives others, as docs/identifiers.md says. The fuzz target "uris"
// compares this with libsoup.

#include <glib.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "util/PercentEscape.h"
#include "widgetid/uri/UriFunctions.h"

namespace {

using orvane::nimbrel::util::internal::escapedByte;
using orvane::zel::config::detail::SoupURI;
using orvane::zel::config::detail::UriFunctions;

/// What a `SoupURI` of this file is.
struct Uri {
  std::string scheme;  // in lower case; empty: there is none
  std::optional<std::string> host;
  std::string path;
};

bool startsWith(std::string_view text, std::string_view start) noexcept {
  return text.substr(0, start.size()) == start;
}

bool endsWith(std::string_view text, std::string_view end) noexcept {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// Without white space at both ends, and without tabs and line breaks.
std::string cleaned(std::string_view text) {
  while (!text.empty() && g_ascii_isspace(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && g_ascii_isspace(text.back())) {
    text.remove_suffix(1);
  }
  std::string clean;
  for (const char c : text) {
    if (c != '\t' && c != '\n' && c != '\r') {
      clean += c;
    }
  }
  return clean;
}

/// Removes a scheme and its colon from the front of `text`, and gives the scheme in lower case;
/// empty when there is none.
std::string takeScheme(std::string_view& text) {
  std::string scheme;
  for (const char c : text) {
    if (c == ':' && !scheme.empty()) {
      text.remove_prefix(scheme.size() + 1);
      return scheme;
    }
    if (!g_ascii_isalpha(c) &&
        (scheme.empty() || (!g_ascii_isdigit(c) && c != '.' && c != '+' && c != '-'))) {
      break;
    }
    scheme += g_ascii_tolower(c);
  }
  return {};
}

/// With all escapes decoded. A decoded NUL ends the text.
std::string decoded(std::string_view text) {
  std::string plain;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const int byte = escapedByte(text, at);
    if (byte == 0) {
      break;
    }
    plain += byte < 0 ? text[at] : static_cast<char>(byte);
    at += byte < 0 ? 0 : 2;
  }
  return plain;
}

/// With escapes of unreserved characters decoded, and what may not stand in a URI escaped.
std::string normalized(std::string_view text) {
  std::string plain;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const int byte = escapedByte(text, at);
    const bool isUnreserved = byte >= 0 && (g_ascii_isalnum(byte) || byte == '-' || byte == '.' ||
                                            byte == '_' || byte == '~');
    plain += isUnreserved ? static_cast<char>(byte) : text[at];
    at += isUnreserved ? 2 : 0;
  }
  constexpr char GRAPHIC_RESERVED[] = "!\"#$%&'()*+,/:;<=>?@[\\]^`{|}";
  const std::unique_ptr<char, decltype(&g_free)> escaped(
      g_uri_escape_bytes(reinterpret_cast<const guint8*>(plain.data()), plain.size(),
                         GRAPHIC_RESERVED),
      &g_free);
  return escaped.get();
}

/// Reads "user:password@host:port". False when the text is no authority.
bool readAuthority(std::string_view text, std::string& host) {
  const std::size_t user = text.find('@');
  if (user != std::string_view::npos) {
    text.remove_prefix(user + 1);
  }
  std::string_view port;
  if (startsWith(text, "[")) {
    const std::size_t end = text.find(']');
    if (end == std::string_view::npos) {
      return false;
    }
    port = text.substr(end + 1);
    if (!startsWith(port, ":")) {
      port = {};  // whatever follows an address has no meaning
    }
    text = text.substr(1, end - 1);
    // A zone begins with "%25", or with a "%" that is no escape.
    const std::size_t zone = text.find('%');
    const bool isEscaped = zone == std::string_view::npos || startsWith(text.substr(zone), "%25");
    host = isEscaped ? decoded(text) : std::string(text);
  } else {
    const std::size_t end = std::min(text.find(':'), text.size());
    port = text.substr(end);
    host = decoded(text.substr(0, end));
  }
  if (port.size() < 2) {
    return true;
  }
  // A sign and white space in front of a number pass.
  const std::string number(port.substr(1));
  char* end = nullptr;
  (void)std::strtoul(number.c_str(), &end, 10);
  return *end == '\0';
}

/// Without segments that are ".".
std::string withoutSingleDots(std::string_view path) {
  std::string text(path.substr(0, 1));
  for (std::size_t at = 1; at < path.size();) {
    if (path[at - 1] == '/' && startsWith(path.substr(at), "./")) {
      at += 2;
    } else {
      text += path[at++];
    }
  }
  if (text.size() > 2 && endsWith(text, "/.")) {
    text.pop_back();
  }
  return text;
}

/// Without segments that are followed by "..". The first byte belongs to no segment, and an empty
/// segment is a part of the next one.
std::string withoutDoubleDots(std::string_view path) {
  constexpr std::string_view UP = "../";
  std::string text(path.substr(0, 1));
  std::vector<std::size_t> starts;  // of the segments in `text` that may be removed
  std::size_t at = 1;
  while (at < path.size()) {
    const bool isUp = startsWith(path.substr(at), UP);
    const std::size_t slash = isUp ? at + 2 : path.find('/', at + 1);
    if (slash == std::string_view::npos) {
      break;
    }
    if (isUp && !starts.empty()) {
      text.resize(starts.back());
      starts.pop_back();
    } else {
      if (!isUp) {
        starts.push_back(text.size());
      }
      text += path.substr(at, slash + 1 - at);
    }
    at = slash + 1;
  }
  if (at < path.size()) {
    text += path.substr(at);
  }
  return text;
}

std::string withoutDots(std::string_view path) {
  std::string text = withoutDoubleDots(withoutSingleDots(path));
  if (text.size() > 3 && endsWith(text, "/..")) {
    const std::size_t slash = text.rfind('/', text.size() - 4);
    const std::size_t start = slash == std::string::npos ? 0 : slash;
    if (text.compare(start, 4, "/../") != 0) {
      text.resize(start + 1);
    }
  }
  std::size_t front = 0;
  while (text.compare(front, 4, "/../") == 0) {
    front += 3;
  }
  text.erase(0, front);
  return text == "/.." ? "/" : text;
}

Uri* toUri(SoupURI* uri) noexcept {
  return reinterpret_cast<Uri*>(uri);
}

SoupURI* parseWithBase(SoupURI* base, const char* text) {
  const std::string clean = cleaned(text);
  std::string_view rest = clean;
  const std::size_t fragment = rest.find('#');
  rest = rest.substr(0, fragment);
  auto uri = std::make_unique<Uri>();
  uri->scheme = takeScheme(rest);
  if (uri->scheme.empty() && base == nullptr) {
    return nullptr;
  }
  if (rest.empty() && base == nullptr && fragment == std::string_view::npos) {
    return reinterpret_cast<SoupURI*>(uri.release());  // a scheme alone is a URI, even "http:"
  }
  if (startsWith(rest, "//")) {
    rest.remove_prefix(2);
    const std::size_t end = std::min(rest.find_first_of("/?"), rest.size());
    if (!readAuthority(rest.substr(0, end), uri->host.emplace())) {
      return nullptr;
    }
    rest.remove_prefix(end);
  }
  const std::string_view path = rest.substr(0, rest.find('?'));
  if (!path.empty()) {
    uri->path = normalized(path);
  }
  const bool keepsDots = uri->path.empty() || uri->scheme == "data";
  if (uri->scheme.empty()) {
    const Uri& from = *toUri(base);
    uri->scheme = from.scheme;
    if (!uri->host) {
      uri->host = from.host;
      if (uri->path.empty()) {
        uri->path = from.path;
      } else if (uri->path.front() != '/') {
        const std::size_t slash = from.path.rfind('/');
        uri->path.insert(0, slash == std::string::npos ? "/" : from.path.substr(0, slash + 1));
      }
    }
  }
  if (!keepsDots) {
    uri->path = withoutDots(uri->path);
  }
  const bool isHttp = uri->scheme == "http" || uri->scheme == "https";
  if ((isHttp || uri->scheme == "ftp") && !uri->host) {
    return nullptr;
  }
  if (isHttp && uri->path.empty()) {
    uri->path = "/";
  }
  return reinterpret_cast<SoupURI*>(uri.release());
}

SoupURI* parse(const char* text) {
  return parseWithBase(nullptr, text);
}

void freeUri(SoupURI* uri) {
  delete toUri(uri);
}

const char* host(const SoupURI* uri) {
  const auto& name = reinterpret_cast<const Uri*>(uri)->host;
  return name ? name->c_str() : nullptr;
}

const char* path(const SoupURI* uri) {
  return reinterpret_cast<const Uri*>(uri)->path.c_str();
}

}  // namespace

const UriFunctions nimbrel_glib_uris = {parse, parseWithBase, freeUri, host, path};
