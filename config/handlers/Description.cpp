#include "config/LanguageReports.h"
#include "config/NimbrelConfigParser.h"
#include "config/Report.h"

namespace orvane::nimbrel::config {

void NimbrelConfigParser::processDescription(const std::shared_ptr<util::XmlNode>& node) {
  BasicConfig& target = record();
  if (target.description()) {
    return detail::reportLater(node.get(), observation.get());
  }
  target.description() = rules.getTextContent(node, false);
}

}  // namespace orvane::nimbrel::config
