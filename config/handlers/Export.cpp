#include "config/RuleReaders.h"
#include "config/handlers/KnownElement.h"
#include "util/Log.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

// The map's hash is not keyed, so paths can be made that all fall into one bucket; by chance not
// even a few do. This many tell an attack, whose cost would be the square of the document's size.
constexpr std::size_t MAX_COLLISIONS = 100;

constexpr AttributeDescription ATTRIBUTES[] = {{"resource", ValueKind::PATH, true, "exports[]"}};

bool handle(const HandlerContext& context, const std::shared_ptr<util::XmlNode>& node) {
  const util::Option<std::string> resource = readAttribute(*node, ATTRIBUTES[0]);
  const Reporter report = context.reporterOf(*node);
  if (!resource) {
    context.parser.setError("Missing or invalid resource element");
    report(FindingCode::MISSING_ATTRIBUTE, ATTRIBUTES[0]);
    return false;
  }
  const std::string& path = resource.get();
  auto& exports = context.record.exports();
  if (exports.bucket_size(exports.bucket(path)) > MAX_COLLISIONS) {
    context.parser.setError("Too many colliding resource paths");
    report(FindingCode::OUT_OF_RANGE, ATTRIBUTES[0], resource);
    return false;
  }
  if (!exports.try_emplace(path, Config::Export{path}).second) {
    report(FindingCode::REPEATED, ATTRIBUTES[0], resource);
  }
  NIMBREL_LOG_DEBUG("NimbrelConfigParser::processExport", "resourcePath = %s", path.c_str());
  return true;
}

}  // namespace

extern const KnownElement EXPORT;
const KnownElement EXPORT = {{"export", true, Repetition::UNIQUE_BY, "resource", ATTRIBUTES},
                             handle};

}  // namespace detail

bool NimbrelConfigParser::processExport(const std::shared_ptr<util::XmlNode>& node) {
  return processExtension(node, detail::EXPORT);
}

}  // namespace orvane::nimbrel::config
