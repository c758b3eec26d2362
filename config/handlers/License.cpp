#include <utility>

#include "config/NimbrelConfigParser.h"

namespace orvane::nimbrel::config {

void NimbrelConfigParser::processLicense(const std::shared_ptr<util::XmlNode>& node) {
  BasicConfig& target = record();
  if (!target.license()) {
    util::LocalizableString text = rules.getTextContent(node, false);
    target.license() = Config::License{std::move(text), {}, readIri(*node, "href")};
  }
}

}  // namespace orvane::nimbrel::config
