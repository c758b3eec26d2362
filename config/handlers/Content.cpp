#include <utility>

#include "config/handlers/Elements.h"

namespace orvane::nimbrel::config::detail {
namespace content {

enum : std::uint8_t { SRC, ENCODING, TYPE };
constexpr AttributeDescription ATTRIBUTES[] = {
    neededAttribute("src", ValueKind::PATH, "src"),
    optionalAttribute("encoding", ValueKind::ENCODING, "encoding"),
    optionalAttribute("type", ValueKind::MEDIA_TYPE, "type"),
};

static bool handle(HandlerContext& context, const Node& node) {
  const ElementReader reader = context.readerOf(*node);
  util::Option<Config::StartFile>& startFile = context.record.startFile();
  if (startFile || context.contentSeen) {
    return reader.report(FindingCode::REPEATED);
  }
  // Set before anything is read: the first element counts even when it is unusable, and then there
  // is no start file.
  context.contentSeen = true;
  util::Option<std::string> src = reader.filledText(ATTRIBUTES[SRC]);
  if (!src) {
    return false;
  }
  Config::StartFile file{std::move(src.get()), {}, {}};
  util::Option<std::string> encoding = reader.text(ATTRIBUTES[ENCODING]);
  if (encoding) {
    file.encoding = std::move(encoding.get());
  }
  util::Option<std::string> type = reader.text(ATTRIBUTES[TYPE]);
  if (type) {
    file.type = std::move(type.get());
  }
  startFile = std::move(file);
  return true;
}

}  // namespace content

const KnownElement CONTENT = w3cElement("content", Repetition::FIRST_COUNTS, content::handle,
                                        "startFile", content::ATTRIBUTES);

}  // namespace orvane::nimbrel::config::detail
