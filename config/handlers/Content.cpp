#include <utility>

#include "config/LanguageReports.h"
#include "config/NimbrelConfigParser.h"
#include "config/Report.h"

namespace orvane::nimbrel::config {

void NimbrelConfigParser::processContent(const std::shared_ptr<util::XmlNode>& node) {
  BasicConfig& target = record();
  // The first element counts even when it is unusable: then there is no start file.
  if (target.startFile() || contentSeen) {
    return detail::reportLater(node.get(), observation.get());
  }
  util::Option<std::string> src = rules.getSingleAttributeValue(node, nullptr, "src");
  util::Option<std::string> encoding = rules.getSingleAttributeValue(node, nullptr, "encoding");
  util::Option<std::string> type = rules.getSingleAttributeValue(node, nullptr, "type");
  contentSeen = true;  // only now: what may throw lies behind
  if (!src || src.get().empty()) {
    return detail::Report(observation.get(), node.get())(
        LegacyCode::CONTENT_WITHOUT_SRC, "src", src,
        "Without a path there is no start file, whatever follows.");
  }
  Config::StartFile file{std::move(src.get()), {}, {}};
  if (encoding) {
    file.encoding = std::move(encoding.get());
  }
  if (type) {
    file.type = std::move(type.get());
  }
  target.startFile() = std::move(file);
}

}  // namespace orvane::nimbrel::config
