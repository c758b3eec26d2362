#include "config/NimbrelConfigParser.h"
#include "util/Log.h"

namespace orvane::nimbrel::config {

bool NimbrelConfigParser::processExport(const std::shared_ptr<util::XmlNode>& node) {
  if (node == nullptr || config == nullptr) {
    return false;
  }
  const util::Option<std::string> resource =
      rules.getSingleAttributeValue(node, nullptr, "resource");
  if (!resource) {
    setError("Missing or invalid resource element");
    return false;
  }
  // The first export of a path wins.
  const std::string& path = resource.get();
  config->exports().try_emplace(path, Config::Export{path});
  NIMBREL_LOG_DEBUG("NimbrelConfigParser::processExport", "resourcePath = %s", path.c_str());
  return true;
}

}  // namespace orvane::nimbrel::config
