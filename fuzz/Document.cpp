// A document as a buffer and as a file, for a user agent whose locales the input chooses.
//
//     en,de;UTF-8          locales, and the encoding if there is a ";"
//     <widget ...>         the document
//
// The same bytes give the same record twice, or the same rejection, with the same error text and
// log lines; the second time with an observer. Every present value obeys its rule.

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "config/Namespaces.h"
#include "config/NimbrelConfigParser.h"
#include "fuzz/Host.h"
#include "fuzz/Property.h"
#include "tests/support/ConfigReader.h"
#include "tests/support/RecordDump.h"
#include "util/IRIParser.h"

namespace orvane::nimbrel::fuzz {
namespace {

using config::Config;

/// A file that holds the given bytes, in memory.
class MemoryFile {
 public:
  explicit MemoryFile(std::string_view bytes) : descriptor_(::memfd_create("document", 0)) {
    require(descriptor_ >= 0, "there is a file to read from");
    require(::write(descriptor_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
            "the file takes the document");
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { ::close(descriptor_); }

  [[nodiscard]] std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

class Observer : public config::ParseObserver {
 public:
  void onFinding(const config::Finding& finding) override {
    require(!failed_, "nothing is reported after what ends the parse");
    failed_ = finding.code <= config::FindingCode::NUMBER_REJECTED;
    require(finding.element == nullptr || finding.line != 0, "an element has a line");
  }

  [[nodiscard]] bool hasFailed() const { return failed_; }

 private:
  bool failed_ = false;
};

/// The record as a text, or why there is none, and what was logged. `check` sees the record.
template <typename Parse, typename Check>
std::string outcome(test::Reader& parser, Parse parse, Check check) {
  takeLogDigest();
  try {
    const std::shared_ptr<Config> config = parse();
    require(config != nullptr, "a parse returns a record");
    const std::string digest = std::to_string(takeLogDigest());
    check(parser.record());
    return test::dumpOf(parser.record()) + parser.getErrorText() + digest;
  } catch (const config::ConfigParser::ConfigException& rejection) {
    return "rejected: " + std::string(rejection.what()) + ' ' + std::to_string(rejection.line) +
           ' ' + std::to_string(rejection.column);
  } catch (const std::invalid_argument& rejection) {
    require(std::string(rejection.what()) == "input", "only a number may be an invalid argument");
    return "invalid number";
  } catch (const std::overflow_error& rejection) {
    require(std::string(rejection.what()) == "input", "only a number may overflow");
    return "number too large";
  }
}

bool isIri(const std::string& text) {
  util::Option<util::IRI> iri;
  return util::IRIParser().tryParse(text.c_str(), iri);
}

template <typename List, typename Key>
bool allDistinct(const List& list, Key key) {
  std::set<std::string> seen;
  return std::all_of(list.begin(), list.end(),
                     [&](const auto& entry) { return seen.insert(entry.*key).second; });
}

void checkNumbers(const Config& config) {
  require(!config.getWidth() || config.getWidth().get() != 0, "a width is above 0");
  require(!config.getHeight() || config.getHeight().get() != 0, "a height is above 0");
  for (const Config::Icon& icon : config.getIcons()) {
    require(!icon.src.empty(), "an icon has a path");
    require(!icon.width || icon.width.get() != 0, "an icon's width is above 0");
    require(!icon.height || icon.height.get() != 0, "an icon's height is above 0");
  }
  const Config::AppSettings& settings = config.getAppSettings();
  require(settings.defaultFontSize >= 0, "a font size is not negative");
  require(settings.minimumFontSize >= -1, "a minimum font size is not negative");
  require(settings.zoomFactor >= 0.0F, "a zoom factor is above 0");
  require(!settings.reserved, "nothing sets the reserved flag");
  require(config.getLocalResources().applicationCacheLoadDelay >= 0.0, "a delay is not negative");
  require(config.getOrvnAuthMode() == 0 || config.getOrvnAuthMode() == 1,
          "there are two authentication modes");
}

void checkTexts(const Config& config) {
  require(!config.getId() || isIri(config.getId().get()), "an id is an IRI");
  require(!config.getVersion() || !config.getVersion().get().empty(), "a version is not empty");
  require(!config.getAuthor() || !config.getAuthor().get().href ||
              isIri(config.getAuthor().get().href.get()),
          "an author's link is an IRI");
  require(!config.getLicense() || !config.getLicense().get().href ||
              isIri(config.getLicense().get().href.get()),
          "a licence's link is an IRI");
  require(!config.getLicense() || !config.getLicense().get().file, "no licence names a file");
  require(!config.getStartFile() || !config.getStartFile().get().src.empty(),
          "a start file has a path");
  if (config.getName()) {
    const std::string name = config.getName().get().c_str();
    require(
        name.find("  ") == std::string::npos && name.find_first_of("\t\n\r") == std::string::npos,
        "a name's white space is normalised");
    require(name.empty() || (name.front() != ' ' && name.back() != ' '), "a name is trimmed");
  }
  const util::Option<std::string>& store = config.getTavloApplicationId();
  require(!store || (!store.get().empty() && store.get().size() <= 32 &&
                     store.get().find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789") ==
                         std::string::npos),
          "a store id is 1 to 32 lower-case letters and digits");
}

void checkLists(const Config& config) {
  require(allDistinct(config.getIcons(), &Config::Icon::src), "icons are distinct");
  require(allDistinct(config.getPreferences(), &Config::Preference::name),
          "preferences are distinct");
  for (const Config::Preference& preference : config.getPreferences()) {
    require(!preference.name.empty(), "a preference has a name");
  }
  const std::vector<std::string>& modes = config.getWindowModes();
  require(std::set<std::string>(modes.begin(), modes.end()).size() == modes.size(),
          "view modes are distinct");
  for (const Config::Feature& feature : config.getFeatures()) {
    require(isIri(feature.name), "a feature's name is an IRI");
    for (const auto& param : feature.params) {
      require(!param.first.empty(), "a parameter has a name");
    }
  }
  for (const auto& [path, entry] : config.getExports()) {
    require(path == entry.resourcePath, "an export is found by its path");
  }
}

void checkAccess(const Config& config) {
  const util::IDNConverter idn;
  for (const Config::AccessRequest& request : config.getAccessRequestList()) {
    require(request.element != nullptr, "a request keeps its element");
    if (request.allOrigins != 0) {
      require(request.scheme.empty() && request.host.empty() && request.port == 0 &&
                  !request.subdomains,
              "the request for all origins sets nothing else");
      continue;
    }
    require(!request.scheme.empty(), "an origin has a scheme");
    require(!request.host.empty(), "an origin has a host");
    std::string ascii;
    require(idn.tryConvertToASCII(request.host.c_str(), ascii) && ascii == request.host,
            "a host is its own ASCII form");
  }
}

void checkElements(config::BasicConfig& config, const std::vector<std::string>& asked) {
  const std::vector<std::string>& locales = config.getUserAgentLocales();
  require(locales.size() > asked.size() && locales.back() == "*" &&
              std::equal(asked.begin(), asked.end(), locales.begin()),
          "the locales are the user agent's, then the document's, then \"*\"");
  for (const config::Element& element : config.elements()) {
    const util::Option<std::string> name = element.getName();
    const util::Option<std::string> space = element.getNamespace();
    require(static_cast<bool>(name), "a kept element has a name");
    const std::vector<const config::Element*> found =
        config.getElements(name.get().c_str(), space ? space.get().c_str() : nullptr);
    require(std::find(found.begin(), found.end(), &element) != found.end(),
            "a kept element is found by its name and namespace");
    if (config.elements().size() > 50) {
      break;  // a query is linear, all of them are not
    }
  }
}

}  // namespace
}  // namespace orvane::nimbrel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace orvane::nimbrel;
  using fuzz::require;
  std::string_view document = fuzz::viewOf(data, size);
  std::string_view list = fuzz::takeUpTo('\n', document);
  if (document.empty()) {
    return 0;
  }
  const bool hasEncoding = list.find(';') != std::string_view::npos;
  std::string_view languages = fuzz::takeUpTo(';', list);
  const std::string encodingName(fuzz::cString(list));
  const char* const encoding = hasEncoding ? encodingName.c_str() : nullptr;
  std::vector<std::string> locales;
  while (!languages.empty() && locales.size() < 16) {
    locales.emplace_back(fuzz::takeUpTo(',', languages));
  }

  test::Reader parser(locales);
  const std::string fromBuffer = fuzz::outcome(
      parser,
      [&] {
        return parser.parse(document.data(), static_cast<unsigned int>(document.size()), nullptr,
                            encoding);
      },
      [&](config::BasicConfig& record) {
        fuzz::checkNumbers(record);
        fuzz::checkTexts(record);
        fuzz::checkLists(record);
        fuzz::checkAccess(record);
        fuzz::checkElements(record, locales);
      });
  const fuzz::MemoryFile file(document);
  test::Reader observed(locales);
  const auto observer = std::make_shared<fuzz::Observer>();
  observed.setObserver(observer);
  bool parsed = false;
  const std::string fromFile = fuzz::outcome(
      observed, [&] { return observed.parse(file.path().c_str(), encoding); },
      [&](config::BasicConfig&) { parsed = true; });
  require(parsed != observer->hasFailed(), "exactly a failing parse reports an error");
  if (fromBuffer != fromFile) {
    std::fprintf(stderr, "%s\n-- but from the file --\n%s\n", fromBuffer.c_str(), fromFile.c_str());
  }
  require(fromBuffer == fromFile, "the same bytes give the same record");
  return 0;
}
