#include <utility>

#include "config/Namespaces.h"
#include "config/NimbrelConfigParser.h"
#include "config/RuleReaders.h"

namespace orvane::nimbrel::config {

void NimbrelConfigParser::processFeature(const std::shared_ptr<util::XmlNode>& node) {
  std::vector<Config::Feature>& features = record().features();
  util::Option<std::string> name = rules.getSingleAttributeValue(node, nullptr, "name");
  if (!name) {
    return;
  }
  Config::Feature feature;
  feature.required =
      internal::readBoolean(internal::trimmedAttribute(*node, "required")).value_or(true);
  if (!iriParser->tryParse(name.get().c_str(), idIri)) {
    if (feature.required) {
      throw ConfigException("Feature name is not a valid IRI.", node->getLineNumber(), 0U);
    }
    return;
  }
  feature.name = std::move(name.get());
  for (const util::XmlNode* child = node->firstElementChild(); child != nullptr;
       child = child->nextElementSibling()) {
    if (!rules.xmlNodeHasName(*child, W3C_WIDGETS_NAMESPACE, "param")) {
      continue;
    }
    util::Option<std::string> key = rules.getSingleAttributeValue(*child, nullptr, "name");
    if (!key || key.get().empty()) {
      continue;
    }
    util::Option<std::string> value = rules.getSingleAttributeValue(*child, nullptr, "value");
    if (value) {
      feature.params.emplace_back(std::move(key.get()), std::move(value.get()));
    }
  }
  features.push_back(std::move(feature));
}

}  // namespace orvane::nimbrel::config
