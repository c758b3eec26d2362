#include <utility>

#include "config/KeyIndex.h"
#include "config/NimbrelConfigParser.h"
#include "config/RuleReaders.h"

namespace orvane::nimbrel::config {

void NimbrelConfigParser::processIcon(const std::shared_ptr<util::XmlNode>& node) {
  std::vector<Config::Icon>& icons = record().icons();
  util::Option<std::string> src = rules.getSingleAttributeValue(node, nullptr, "src");
  if (!src || src.get().empty()) {
    return;
  }
  // The first icon with a path wins.
  internal::KeyIndex* const index = indexes == nullptr ? nullptr : &indexes->icons;
  if (internal::hasKey(icons, &Config::Icon::src, src.get(), index)) {
    return;
  }
  icons.push_back(Config::Icon{std::move(src.get()),
                               internal::readSize(internal::trimmedAttribute(*node, "height")),
                               internal::readSize(internal::trimmedAttribute(*node, "width"))});
}

}  // namespace orvane::nimbrel::config
