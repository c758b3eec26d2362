#include "tools/findings/ArtifactUri.h"

#include <algorithm>
#include <vector>

#include "util/Ascii.h"
#include "util/PercentEscape.h"

namespace orvane::nimbrel::tools {
namespace {

void appendEncoded(std::string& uri, std::string_view segment) {
  for (const char c : segment) {
    if (util::ascii::isLetterOrDigit(c) || c == '-' || c == '.' || c == '_' || c == '~') {
      uri += c;
    } else {
      util::internal::appendEscape(uri, '%', c);
    }
  }
}

std::vector<std::string_view> normalizedSegments(std::string_view path) {
  std::vector<std::string_view> segments;
  const bool absolute = isAbsolute(path);
  while (!path.empty()) {
    const std::string_view segment = path.substr(0, path.find('/'));
    path.remove_prefix(std::min(segment.size() + 1, path.size()));
    if (segment.empty() || segment == ".") {
      continue;
    }
    if (segment != ".." || (!absolute && (segments.empty() || segments.back() == ".."))) {
      segments.push_back(segment);
    } else if (!segments.empty()) {
      segments.pop_back();
    }
  }
  return segments;
}

}  // namespace

bool isAbsolute(std::string_view path) noexcept {
  return !path.empty() && path.front() == '/';
}

std::string artifactUri(std::string_view path) {
  std::string uri = isAbsolute(path) ? "file://" : "";
  for (const std::string_view segment : normalizedSegments(path)) {
    uri += uri.empty() ? "" : "/";
    appendEncoded(uri, segment);
  }
  return uri.empty() ? "." : uri == "file://" ? "file:///" : uri;
}

}  // namespace orvane::nimbrel::tools
