#include <utility>

#include "config/RuleReaders.h"
#include "config/handlers/KnownElement.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

enum : std::uint8_t { SRC, ENCODING, TYPE };
constexpr AttributeDescription ATTRIBUTES[] = {
    {"src", ValueKind::PATH, true, "startFile.src"},
    {"encoding", ValueKind::ENCODING, false, "startFile.encoding"},
    {"type", ValueKind::MEDIA_TYPE, false, "startFile.type"},
};

}  // namespace

extern const KnownElement CONTENT;
const KnownElement CONTENT = {{"content", false, Repetition::FIRST_COUNTS, {}, ATTRIBUTES},
                              callMember<&NimbrelConfigParser::processContent>};

}  // namespace detail

void NimbrelConfigParser::processContent(const std::shared_ptr<util::XmlNode>& node) {
  BasicConfig& target = record();
  // The first element counts even when it is unusable: then there is no start file.
  if (target.startFile() || contentSeen) {
    return reporterOf(node)(FindingCode::REPEATED);
  }
  util::Option<std::string> src = detail::readAttribute(node, detail::ATTRIBUTES[detail::SRC]);
  util::Option<std::string> encoding =
      detail::readAttribute(node, detail::ATTRIBUTES[detail::ENCODING]);
  util::Option<std::string> type = detail::readAttribute(node, detail::ATTRIBUTES[detail::TYPE]);
  contentSeen = true;  // only now: what may throw lies behind
  if (!src || src.get().empty()) {
    return reporterOf(node)(FindingCode::MISSING_ATTRIBUTE, detail::ATTRIBUTES[detail::SRC], src);
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
