#include <utility>

#include "config/NimbrelConfigParser.h"

namespace orvane::nimbrel::config {

void NimbrelConfigParser::processAuthor(const std::shared_ptr<util::XmlNode>& node) {
  BasicConfig& target = record();
  if (!target.author()) {
    util::LocalizableString name = rules.getTextContent(node, true);
    target.author() = Config::Author{rules.getSingleAttributeValue(node, nullptr, "email"),
                                     readIri(*node, "href"), std::move(name)};
  }
}

}  // namespace orvane::nimbrel::config
