#include "config/LanguageReports.h"
#include "config/NimbrelConfigParser.h"
#include "config/Report.h"

namespace orvane::nimbrel::config {

void NimbrelConfigParser::processName(const std::shared_ptr<util::XmlNode>& node) {
  BasicConfig& target = record();
  if (target.name()) {
    return internal::reportLater(*node, observation.get());
  }
  target.name() = rules.getTextContent(node, true);
  target.shortName() = rules.getSingleDisplayableAttributeValue(node, nullptr, "short");
}

}  // namespace orvane::nimbrel::config
