#include "config/handlers/Elements.h"
#include "util/Log.h"

namespace orvane::nimbrel::config::detail {
namespace exports {

// An author can choose paths whose hashes collide, at a cost that is the square of the document's
// size. So many never fall into one bucket by chance; further ones are ignored.
constexpr std::size_t MAX_COLLISIONS = 100;

constexpr AttributeDescription ATTRIBUTES[] = {
    neededAttribute("resource", ValueKind::PATH, "exports[]")};

static bool handle(HandlerContext& context, const Node& node) {
  const ElementReader reader = context.readerOf(*node);
  const util::Option<std::string> resource = reader.text(ATTRIBUTES[0]);
  if (!resource) {
    context.errorText = "Missing or invalid resource element";
    return reader.report(FindingCode::MISSING_ATTRIBUTE, ATTRIBUTES[0], resource);
  }
  const std::string& path = resource.get();
  auto& exports = context.record.exports();
  if (exports.bucket_size(exports.bucket(path)) > MAX_COLLISIONS) {
    context.errorText = "Too many colliding resource paths";
    return reader.report(FindingCode::OUT_OF_RANGE, ATTRIBUTES[0], resource);
  }
  if (!exports.try_emplace(path, Config::Export{path}).second) {
    reader.report(FindingCode::REPEATED, ATTRIBUTES[0], resource);
  }
  NIMBREL_LOG_DEBUG("NimbrelConfigParser::processExport", "resourcePath = %s", path.c_str());
  return true;
}

}  // namespace exports

const KnownElement EXPORT = {
    {"export", true, Repetition::UNIQUE_BY, "resource", NO_MEMBER, exports::ATTRIBUTES},
    exports::handle};

}  // namespace orvane::nimbrel::config::detail
