#include <utility>

#include "config/KeyIndex.h"
#include "config/RuleReaders.h"
#include "config/handlers/KnownElement.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

enum : std::uint8_t { SRC, WIDTH, HEIGHT };
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
  util::Option<std::string> src = detail::readAttribute(node, detail::ATTRIBUTES[detail::SRC]);
  const detail::Reporter report = reporterOf(node);
  if (!src || src.get().empty()) {
    return report(FindingCode::MISSING_ATTRIBUTE, detail::ATTRIBUTES[detail::SRC], src);
  }
  auto* const index = indexes_ == nullptr ? nullptr : &indexes_->icons;
  if (detail::hasKey(icons, &Config::Icon::src, src.get(), index)) {
    return report(FindingCode::REPEATED, detail::ATTRIBUTES[detail::SRC], src);
  }
  const util::Option<unsigned int> height =
      detail::readSizeAttribute(*node, detail::ATTRIBUTES[detail::HEIGHT], report);
  icons.push_back(
      Config::Icon{std::move(src.get()), height,
                   detail::readSizeAttribute(*node, detail::ATTRIBUTES[detail::WIDTH], report)});
}

}  // namespace orvane::nimbrel::config
