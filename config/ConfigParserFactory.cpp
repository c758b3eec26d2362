#include "config/ConfigParserFactory.h"

#include "util/IDNConverter.h"
#include "util/IRIParser.h"
#include "util/UnicodeUtilICU.h"
#include "util/XmlParserLibXml.h"

namespace orvane::nimbrel::config {

std::shared_ptr<ConfigParser> createConfigParser(const std::vector<std::string>& userAgentLocales) {
  return createNimbrelConfigParser(userAgentLocales);
}

std::shared_ptr<NimbrelConfigParser> createNimbrelConfigParser(
    const std::vector<std::string>& userAgentLocales) {
  return std::make_shared<NimbrelConfigParser>(
      userAgentLocales, std::make_shared<util::XmlParserLibXml>(),
      std::make_shared<util::IRIParser>(), std::make_shared<util::IDNConverter>(),
      std::make_shared<util::UnicodeUtilICU>());
}

}  // namespace orvane::nimbrel::config
