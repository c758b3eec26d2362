#include <utility>

#include "config/LanguageReports.h"
#include "config/NimbrelConfigParser.h"
#include "config/Report.h"

namespace orvane::nimbrel::config {

void NimbrelConfigParser::processLicense(const std::shared_ptr<util::XmlNode>& node) {
  BasicConfig& target = record();
  if (target.license()) {
    return detail::reportLater(node.get(), observation.get());
  }
  util::LocalizableString text = rules.getTextContent(node, false);
  target.license() =
      Config::License{std::move(text), {}, readIri(*node, "href", LegacyCode::HREF_NOT_IRI)};
}

}  // namespace orvane::nimbrel::config
