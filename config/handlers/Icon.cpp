#include <utility>

#include "config/KeyIndex.h"
#include "config/NimbrelConfigParser.h"
#include "config/Report.h"
#include "config/RuleReaders.h"

namespace orvane::nimbrel::config {

void NimbrelConfigParser::processIcon(const std::shared_ptr<util::XmlNode>& node) {
  std::vector<Config::Icon>& icons = record().icons();
  util::Option<std::string> src = rules.getSingleAttributeValue(node, nullptr, "src");
  const detail::Report lost(observation.get(), node.get());
  if (!src || src.get().empty()) {
    return lost(LegacyCode::ICON_WITHOUT_SRC, "src", src, "An icon needs a path.");
  }
  auto* const index = indexes == nullptr ? nullptr : &indexes->icons;
  if (detail::hasKey(icons, &Config::Icon::src, src.get(), index)) {
    return lost(LegacyCode::REPEATED_ICON, "src", src, "The first icon with a path wins.");
  }
  const auto size = [&](const char* attribute) {
    return detail::readSize(detail::trimmedAttribute(*node, attribute), attribute, lost);
  };
  const util::Option<unsigned int> height = size("height");
  icons.push_back(Config::Icon{std::move(src.get()), height, size("width")});
}

}  // namespace orvane::nimbrel::config
