// A program as a runtime would be: it brings the host's symbols and a service of its own, and what
// is thrown and what is shared cross the library's border both ways.
#include <exception>
#include <iostream>
#include <memory>
#include <string>

#include "config/ConfigParserFactory.h"
#include "config/Element.h"
#include "config/Namespaces.h"
#include "config/NimbrelConfigParser.h"
#include "util/HostSymbols.h"
#include "util/HostUriMunger.h"
#include "util/PortableFilenameMunger.h"
#include "util/UnicodeUtilICU.h"
#include "util/XmlParserLibXml.h"
#include "widgetid/BasicWidgetId.h"
#include "widgetid/LocalizedElementParser.h"
#include "widgetid/PelloWidgetIdParser.h"

using namespace orvane::nimbrel;
namespace zel = orvane::zel;

const char* APP_ID = "consumer";
std::uint32_t g_quillo_log_mask = 0;
int corvel_get_int(const char* /*group*/, const char* /*name*/, int* status, int /*fallback*/) {
  *status = 0;
  return 300;
}

namespace {

int failures = 0;

void expect(bool good, const char* what) {
  if (!good) {
    std::cout << "failed: " << what << '\n';
    ++failures;
  }
}

/// A service of the host's own.
class NoConverter : public util::IDNConverter {
 public:
  bool tryConvertToASCII(const char* host, std::string& out) const override {
    out = std::string("converted-") + host;
    return true;
  }
};

const std::string DOCUMENT =
    std::string("<widget xmlns='http://www.w3.org/ns/widgets' id='https://example.org/app'") +
    " xmlns:x='" + config::EXTENSION_NAMESPACE + "'><name xml:lang='de'>Hallo</name>" +
    "<name>Hello</name><access origin='https://example.org'/><x:settings>" +
    "<x:setting name='defaultFontSize300' value='30'/><x:setting name='debug' value='yes'/>" +
    "</x:settings></widget>";

std::shared_ptr<config::Config> parse(config::ConfigParser& parser, const std::string& text) {
  return parser.parse(text.data(), static_cast<unsigned int>(text.size()), nullptr, nullptr);
}

}  // namespace

int main() {
  try {
    const auto parser = config::createConfigParser({"de"});
    const std::shared_ptr<config::Config> record = parse(*parser, DOCUMENT);
    expect(record->getName().get().c_str() == std::string("Hallo"), "the preferred name");
    expect(record->getAppSettings().defaultFontSize == 30, "the host's density");
    expect(util::logMask() != 0, "the host's log mask");
    expect(std::dynamic_pointer_cast<config::BasicConfig>(record) != nullptr, "the record's type");
    expect(record->getElements("name", config::W3C_WIDGETS_NAMESPACE).size() == 2, "elements");

    config::NimbrelConfigParser own(
        {}, std::make_shared<util::XmlParserLibXml>(), std::make_shared<util::IRIParser>(),
        std::make_shared<NoConverter>(), std::make_shared<util::UnicodeUtilICU>());
    const auto other = parse(own, DOCUMENT);
    expect(other->getAccessRequestList().at(0).host == "converted-example.org", "own service");

    try {
      parse(*parser, "<html/>");
      expect(false, "a rejection");
    } catch (const config::ConfigParser::ConfigException& rejection) {
      expect(rejection.line == 1, "the rejection's line");
    }

    const zel::config::BasicWidgetId id(record->getId().get().c_str(),
                                        std::make_shared<zel::config::PelloWidgetIdParser>(
                                            std::make_shared<zel::util::HostUriMunger>(),
                                            std::make_shared<zel::util::PortableFilenameMunger>()));
    expect(id.toDirectoryName() == std::string("example.org=2Fapp"), "the directory name");

    const auto names = zel::config::LocalizedElementParser::getLocalizedElementMap(
        DOCUMENT.data(), static_cast<unsigned int>(DOCUMENT.size()), "name", true);
    expect(names.size() == 2 && names.at("*") == "Hello", "the localised map");
  } catch (const std::exception& error) {
    expect(false, error.what());
  }
  std::cout << (failures == 0 ? "host: ok\n" : "host: failed\n");
  return failures == 0 ? 0 : 1;
}
