#include "config/ConfigParserFactory.h"

#include "util/IDNConverter.h"
#include "util/IRIParser.h"
#include "util/SharedInstance.h"
#include "util/UnicodeUtilICU.h"
#include "util/XmlParserLibXml.h"

namespace orvane::nimbrel::config {

std::shared_ptr<ConfigParser> createConfigParser(const std::vector<std::string>& userAgentLocales) {
  return createNimbrelConfigParser(userAgentLocales);
}

std::shared_ptr<NimbrelConfigParser> createNimbrelConfigParser(
    const std::vector<std::string>& userAgentLocales) {
  using util::internal::sharedInstance;
  return std::make_shared<NimbrelConfigParser>(
      userAgentLocales, sharedInstance<util::XmlParserLibXml>(), sharedInstance<util::IRIParser>(),
      sharedInstance<util::IDNConverter>(), sharedInstance<util::UnicodeUtilICU>());
}

}  // namespace orvane::nimbrel::config
