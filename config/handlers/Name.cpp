#include <utility>

#include "config/LanguageReports.h"
#include "config/NimbrelConfigParser.h"
#include "config/Report.h"

namespace orvane::nimbrel::config {

void NimbrelConfigParser::processName(const std::shared_ptr<util::XmlNode>& node) {
  BasicConfig& target = record();
  if (target.name()) {
    return detail::reportLater(node.get(), observation.get());
  }
  // Both or none: a name without its short name would be taken for complete.
  util::LocalizableString name = rules.getTextContent(node, true);
  target.shortName().take(rules.getSingleDisplayableAttributeValue(node, nullptr, "short"));
  target.name() = std::move(name);
}

}  // namespace orvane::nimbrel::config
