// Pairs of identifiers, through both identity parsers with the real mungers.
//
//     http://example.org/a     an identifier
//     http://example.org/b     another
//
// Names of directories are safe; the mungers are injective over the pair.

#include <memory>
#include <stdexcept>
#include <string>

#include "fuzz/Property.h"
#include "util/HostUriMunger.h"
#include "util/IDNConverter.h"
#include "util/PortableFilenameMunger.h"
#include "widgetid/BasicWidgetId.h"
#include "widgetid/FilenameWidgetIdParser.h"
#include "widgetid/PelloWidgetIdParser.h"
#include "widgetid/WidgetIdError.h"

namespace orvane::zel::fuzz {
namespace {

using nimbrel::fuzz::require;

const auto filenameMunger = std::make_shared<util::PortableFilenameMunger>();
const auto uriMunger = std::make_shared<util::HostUriMunger>();
const auto byUri = std::make_shared<config::PelloWidgetIdParser>(uriMunger, filenameMunger);
const auto byFilename = std::make_shared<config::FilenameWidgetIdParser>(filenameMunger);

void checkSafe(const std::string& name) {
  constexpr const char* ALLOWED =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~%=";
  require(!name.empty() && name.size() <= 255, "a name has 1 to 255 bytes");
  require(name.find_first_not_of(ALLOWED) == std::string::npos, "a name has harmless bytes only");
  require(name.front() != '.' && name.front() != '-' && name.back() != '.',
          "a name is not hidden, no option and no way up");
}

/// What an identity parser makes of an identifier; empty when it rejects it.
struct Names {
  std::string authority;
  std::string directory;
};

Names namesOf(const std::string& id, const std::shared_ptr<config::WidgetIdParser>& parser) {
  try {
    const config::BasicWidgetId names(id.c_str(), parser);
    require(names.toString() == id, "an identity keeps its identifier");
    require(parser->deriveDirectoryName(id.c_str()) == names.toDirectoryName(),
            "the same identifier has the same name");
    checkSafe(names.toDirectoryName());
    return {names.toAuthority(), names.toDirectoryName()};
  } catch (const config::WidgetIdError&) {
    return {};
  } catch (const std::invalid_argument&) {
    return {};
  }
}

std::string withoutFinalSlash(std::string text) {
  if (!text.empty() && text.back() == '/') {
    text.pop_back();
  }
  return text;
}

std::string normalized(const std::string& id) {
  return byUri->createNormalizedWidgetId(id.c_str(), true);
}

void checkPair(const std::string& first, const std::string& second) {
  const Names one = namesOf(first, byUri);
  const Names other = namesOf(second, byUri);
  if (!one.authority.empty()) {
    checkSafe(one.authority);
  }
  if (!one.directory.empty() && !other.directory.empty()) {
    require((one.directory == other.directory) ==
                (withoutFinalSlash(normalized(first)) == withoutFinalSlash(normalized(second))),
            "URIs share a directory exactly when they are the same host and path");
  }
  const Names file = namesOf(first, byFilename);
  const Names otherFile = namesOf(second, byFilename);
  if (!file.directory.empty() && !otherFile.directory.empty()) {
    const bool same = first.substr(0, first.rfind('.')) == second.substr(0, second.rfind('.'));
    require((file.directory == otherFile.directory) == same,
            "file names share a directory exactly when their stems are the same");
    require((file.authority == otherFile.authority) == same,
            "file names share an authority exactly when their stems are the same");
  }
}

std::string munged(std::string_view bytes) {
  std::string name(bytes);
  filenameMunger->munge(name);
  return name;
}

/// What comes out when the escapes of a host's name are undone.
std::string unescaped(const std::string& name) {
  std::string text;
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (name[i] == '%') {
      text += static_cast<char>(std::stoi(name.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      text += name[i];
    }
  }
  return text;
}

bool isAddress(const std::string& host) {
  return host.find_first_not_of("0123456789abcdefABCDEF:.[]") == std::string::npos &&
         host.find(':') != std::string::npos;
}

void checkHost(const std::string& host) {
  const std::string name = uriMunger->munge(host.c_str());
  require(name.empty() == host.empty(), "only the empty host has the empty name");
  if (host.empty()) {
    return;
  }
  checkSafe(name);
  require(munged(name) == name, "the name of a host is safe already");
  const bool isLong = name.find('~') != std::string::npos;
  if (isLong || isAddress(host)) {
    return;
  }
  std::string ascii;
  const bool isName = host.find_first_of("%[") == std::string::npos &&
                      nimbrel::util::IDNConverter().tryConvertToASCII(host.c_str(), ascii);
  require(unescaped(name) == (isName ? ascii : host), "the name of a host gives it back");
  require(isName == (name.front() != '%' || ascii.compare(0, 1, "-") == 0),
          "what is no host cannot pass for one");
}

}  // namespace
}  // namespace orvane::zel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace orvane;
  using nimbrel::fuzz::require;
  std::string_view second = nimbrel::fuzz::viewOf(data, size);
  const std::string_view first = nimbrel::fuzz::takeUpTo('\n', second);
  zel::fuzz::checkPair(nimbrel::fuzz::cString(first), nimbrel::fuzz::cString(second));
  require((zel::fuzz::munged(first) == zel::fuzz::munged(second)) == (first == second),
          "no two names are munged alike");
  if (!first.empty()) {
    zel::fuzz::checkSafe(zel::fuzz::munged(first));
  }
  zel::fuzz::checkHost(nimbrel::fuzz::cString(first));
  return 0;
}
