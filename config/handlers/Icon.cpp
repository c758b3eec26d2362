#include <utility>

#include "config/handlers/Elements.h"

namespace orvane::nimbrel::config::detail {
namespace icon {

enum : std::uint8_t { SRC, WIDTH, HEIGHT };
constexpr AttributeDescription ATTRIBUTES[] = {
    neededAttribute("src", ValueKind::PATH, "src"),
    optionalAttribute("width", ValueKind::SIZE, "width"),
    optionalAttribute("height", ValueKind::SIZE, "height"),
};

static bool handle(HandlerContext& context, const Node& node) {
  const ElementReader reader = context.readerOf(*node);
  util::Option<std::string> src = reader.filledText(ATTRIBUTES[SRC]);
  if (!src) {
    return false;
  }
  if (!context.icons.insert(src.get())) {
    return reader.report(FindingCode::REPEATED, ATTRIBUTES[SRC], src);
  }
  const util::Option<unsigned int> height = reader.size(ATTRIBUTES[HEIGHT]);
  const util::Option<unsigned int> width = reader.size(ATTRIBUTES[WIDTH]);
  append(context.record.icons(), {std::move(src.get()), height, width});
  return true;
}

}  // namespace icon

const KnownElement ICON =
    w3cElement("icon", Repetition::UNIQUE_BY, icon::handle, "icons[]", icon::ATTRIBUTES);

}  // namespace orvane::nimbrel::config::detail
