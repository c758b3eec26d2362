#include <utility>

#include "config/LanguageReports.h"
#include "config/NimbrelConfigParser.h"
#include "config/Report.h"

namespace orvane::nimbrel::config {

void NimbrelConfigParser::processAuthor(const std::shared_ptr<util::XmlNode>& node) {
  BasicConfig& target = record();
  if (target.author()) {
    return detail::reportLater(node.get(), observation.get());
  }
  util::LocalizableString name = rules.getTextContent(node, true);
  target.author() =
      Config::Author{rules.getSingleAttributeValue(node, nullptr, "email"),
                     readIri(*node, "href", LegacyCode::HREF_NOT_IRI), std::move(name)};
}

}  // namespace orvane::nimbrel::config
