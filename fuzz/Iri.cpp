// IRIs and host names.
//
// The components of an IRI, put together again, are the text; what is rejected leaves the output
// alone. A host's ASCII form is one, is its own ASCII form, and is a name that can be resolved.

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>

#include "fuzz/Property.h"
#include "util/IDNConverter.h"
#include "util/IRIParser.h"
#include "util/Utf8.h"

namespace orvane::nimbrel::fuzz {
namespace {

bool isUtf8(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    if (util::internal::decodeUtf8(text, at) == util::internal::NOT_UTF8) {
      return false;
    }
  }
  return true;
}

bool takePrefix(std::string_view& text, const std::string& prefix) {
  if (text.substr(0, prefix.size()) != prefix) {
    return false;
  }
  text.remove_prefix(prefix.size());
  return true;
}

/// The port is the one component whose text is not kept: "80", "080" and "" are read.
int takePort(std::string_view& text) {
  if (text.empty() || text.front() != ':') {
    return -1;
  }
  text.remove_prefix(1);
  const std::string digits(text.substr(0, text.find_first_not_of("0123456789")));
  text.remove_prefix(digits.size());
  return digits.empty() ? -1 : static_cast<int>(std::strtol(digits.c_str(), nullptr, 10));
}

void checkComponents(const util::IRI& iri, std::string_view text) {
  require(isUtf8(text), "an IRI is UTF-8");
  require(text.find_first_of(" <>\"{}|\\^`") == std::string_view::npos,
          "an IRI has no character that none may have");
  require(!iri.scheme.empty() && takePrefix(text, iri.scheme + ':'), "a scheme comes first");
  require(!iri.hasUserInfo || iri.hasHost, "no user without a host");
  if (iri.hasHost) {
    require(takePrefix(text, iri.hasUserInfo ? "//" + iri.userInfo + '@' : "//"),
            "the user stands before the host");
    require(takePrefix(text, iri.host), "the host is as written");
    require(iri.port == takePort(text) && iri.port <= 65535, "the port is as written");
    require(iri.path.empty() || iri.path.front() == '/', "a path behind a host begins with \"/\"");
  } else {
    require(iri.host.empty() && iri.port == -1, "no port without a host");
    require(iri.path.compare(0, 2, "//") != 0, "\"//\" begins a host");
  }
  require(iri.hasPath == !iri.path.empty() && takePrefix(text, iri.path), "the path is as written");
  require(iri.path.find_first_of("?#") == std::string::npos, "a path ends before \"?\" and \"#\"");
  if (iri.hasQuery) {
    require(takePrefix(text, '?' + iri.query), "the query is as written");
    require(iri.query.find('#') == std::string::npos, "a query ends before \"#\"");
  }
  if (iri.hasFragment) {
    require(takePrefix(text, '#' + iri.fragment), "the fragment is as written");
  }
  require(text.empty(), "nothing is left out");
}

void checkAscii(const std::string& ascii) {
  const util::IDNConverter converter;
  require(!ascii.empty(), "an ASCII form is not empty");
  std::string again;
  require(converter.tryConvertToASCII(ascii.c_str(), again) && again == ascii,
          "an ASCII form is its own");
  if (ascii.front() == '[') {
    return;
  }
  require(std::all_of(ascii.begin(), ascii.end(),
                      [](char c) {
                        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
                               c == '_' || c == '.';
                      }),
          "an ASCII form is lower-case letters, digits and \"-_.\"");
  std::string_view labels = ascii;
  if (labels.back() == '.') {
    labels.remove_suffix(1);
  }
  require(labels.size() <= 253, "a name has at most 253 bytes");
  for (bool more = true; more;) {
    more = labels.find('.') != std::string_view::npos;
    const std::string_view label = takeUpTo('.', labels);
    require(!label.empty() && label.size() <= 63, "a label has 1 to 63 bytes");
  }
}

void checkHost(const std::string& host) {
  std::string ascii = "untouched";
  if (util::IDNConverter().tryConvertToASCII(host.c_str(), ascii)) {
    checkAscii(ascii);
  } else {
    require(ascii == "untouched", "a rejection leaves the output alone");
  }
}

}  // namespace
}  // namespace orvane::nimbrel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace orvane::nimbrel;
  using fuzz::require;
  const std::string text = fuzz::cString(fuzz::viewOf(data, size));
  // From a buffer of its exact size, so that an over-read shows.
  const std::unique_ptr<char[]> exact(new char[text.size() + 1]);
  std::copy_n(text.c_str(), text.size() + 1, exact.get());
  util::IRI before;
  before.scheme = "untouched";
  util::Option<util::IRI> iri;
  iri = before;
  if (util::IRIParser().tryParse(exact.get(), iri)) {
    fuzz::checkComponents(iri.get(), text);
    fuzz::checkHost(iri.get().host);
  } else {
    require(iri && iri.get().scheme == "untouched", "a rejection leaves the output alone");
  }
  fuzz::checkHost(text);
  return 0;
}
