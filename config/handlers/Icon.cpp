#include <utility>

#include "config/KeyIndex.h"
#include "config/RuleReaders.h"
#include "config/handlers/KnownElement.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

constexpr AttributeDescription ATTRIBUTES[] = {
    {"src", ValueKind::PATH, true, "icons[].src"},
    {"width", ValueKind::SIZE, false, "icons[].width"},
    {"height", ValueKind::SIZE, false, "icons[].height"},
};

}  // namespace

extern const KnownElement ICON;
const KnownElement ICON = {{"icon", false, Repetition::UNIQUE_BY, {"src"}, ATTRIBUTES},
                           callMember<&NimbrelConfigParser::processIcon>};

}  // namespace detail

void NimbrelConfigParser::processIcon(const std::shared_ptr<util::XmlNode>& node) {
  std::vector<Config::Icon>& icons = record().icons();
  util::Option<std::string> src = detail::readAttribute(node, "src");
  const detail::Reporter report = reporterOf(node);
  if (!src || src.get().empty()) {
    return report(FindingCode::MISSING_ATTRIBUTE, "src", src);
  }
  auto* const index = indexes_ == nullptr ? nullptr : &indexes_->icons;
  if (detail::hasKey(icons, &Config::Icon::src, src.get(), index)) {
    return report(FindingCode::REPEATED, "src", src);
  }
  const util::Option<unsigned int> height = detail::readSizeAttribute(*node, "height", report);
  icons.push_back(Config::Icon{std::move(src.get()), height,
                               detail::readSizeAttribute(*node, "width", report)});
}

}  // namespace orvane::nimbrel::config
