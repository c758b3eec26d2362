#include "config/NimbrelConfigParser.h"
#include "config/Report.h"
#include "util/Log.h"

namespace orvane::nimbrel::config {
namespace {

// The map's hash is not keyed, so paths can be made that all fall into one bucket; by chance not
// even a few do. This many tell an attack, whose cost would be the square of the document's size.
constexpr std::size_t MAX_COLLISIONS = 100;

}  // namespace

bool NimbrelConfigParser::processExport(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr || config == nullptr) {
    return false;
  }
  const util::Option<std::string> resource =
      rules.getSingleAttributeValue(node, nullptr, "resource");
  const detail::Report lost(observation.get(), node.get());
  if (!resource) {
    setError("Missing or invalid resource element");
    lost(LegacyCode::EXPORT_WITHOUT_RESOURCE, "resource", resource, "An export needs a path.");
    return false;
  }
  const std::string& path = resource.get();
  auto& exports = config->exports();
  if (exports.bucket_size(exports.bucket(path)) > MAX_COLLISIONS) {
    setError("Too many colliding resource paths");
    lost(LegacyCode::VALUE_REFUSED, "resource", resource,
         "More than a hundred paths were made to collide: no more of them is taken.");
    return false;
  }
  if (!exports.try_emplace(path, Config::Export{path}).second) {
    lost(LegacyCode::REPEATED_EXPORT, "resource", resource, "The first export of a path wins.");
  }
  NIMBREL_LOG_DEBUG("NimbrelConfigParser::processExport", "resourcePath = %s", path.c_str());
  return true;
}

}  // namespace orvane::nimbrel::config
