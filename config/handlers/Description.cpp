#include "config/NimbrelConfigParser.h"

namespace orvane::nimbrel::config {

void NimbrelConfigParser::processDescription(const std::shared_ptr<util::XmlNode>& node) {
  BasicConfig& target = record();
  if (!target.description()) {
    target.description() = rules.getTextContent(node, false);
  }
}

}  // namespace orvane::nimbrel::config
