#include <utility>

#include "config/NimbrelConfigParser.h"

namespace orvane::nimbrel::config {

void NimbrelConfigParser::processContent(const std::shared_ptr<util::XmlNode>& node) {
  BasicConfig& target = record();
  // The first element counts even when it is unusable: then there is no start file.
  if (target.startFile() || contentSeen) {
    return;
  }
  contentSeen = true;
  util::Option<std::string> src = rules.getSingleAttributeValue(node, nullptr, "src");
  if (!src || src.get().empty()) {
    return;
  }
  Config::StartFile file{std::move(src.get()), {}, {}};
  util::Option<std::string> encoding = rules.getSingleAttributeValue(node, nullptr, "encoding");
  if (encoding) {
    file.encoding = std::move(encoding.get());
  }
  util::Option<std::string> type = rules.getSingleAttributeValue(node, nullptr, "type");
  if (type) {
    file.type = std::move(type.get());
  }
  target.startFile() = std::move(file);
}

}  // namespace orvane::nimbrel::config
