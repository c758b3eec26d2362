#include <utility>

#include "config/Namespaces.h"
#include "config/NimbrelConfigParser.h"
#include "config/Report.h"
#include "config/RuleReaders.h"
#include "config/Vocabulary.h"

namespace orvane::nimbrel::config {

void NimbrelConfigParser::processFeature(const std::shared_ptr<util::XmlNode>& node) {
  std::vector<Config::Feature>& features = record().features();
  util::Option<std::string> name = rules.getSingleAttributeValue(node, nullptr, "name");
  const detail::Report lost(observation.get(), node.get());
  if (!name) {
    return lost(LegacyCode::FEATURE_WITHOUT_NAME, "name", name, "A feature needs a name.");
  }
  Config::Feature feature;
  feature.required =
      detail::readBooleanAttribute(*node, "required", lost, "The feature is required.")
          .value_or(true);
  if (!iriParser->tryParse(name.get().c_str(), idIri)) {
    if (feature.required) {
      lost(LegacyCode::REQUIRED_FEATURE_NAME, "name", name,
           "The name of a required feature is an IRI.");
      throw ConfigException("Feature name is not a valid IRI.", node->getLineNumber(), 0U);
    }
    return lost(LegacyCode::FEATURE_NAME, "name", name,
                "A name is an IRI; the feature is not required, so it is left out.");
  }
  feature.name = std::move(name.get());
  for (const util::XmlNode* child = node->firstElementChild(); child != nullptr;
       child = child->nextElementSibling()) {
    const detail::Report lostParam(observation.get(), child);
    if (lostParam) {
      detail::examineAttributes(*child, *observation);
    }
    if (!rules.xmlNodeHasName(*child, W3C_WIDGETS_NAMESPACE, "param")) {
      lostParam(LegacyCode::UNKNOWN_ELEMENT, "A feature has only params.", "param");
      continue;
    }
    util::Option<std::string> key = rules.getSingleAttributeValue(*child, nullptr, "name");
    if (!key || key.get().empty()) {
      lostParam(LegacyCode::PARAM_INCOMPLETE, "name", key, "A parameter needs a name.");
      continue;
    }
    util::Option<std::string> value = rules.getSingleAttributeValue(*child, nullptr, "value");
    if (!value) {
      lostParam(LegacyCode::PARAM_INCOMPLETE, "value", value,
                "A parameter needs a value, which may be empty.");
      continue;
    }
    feature.params.emplace_back(std::move(key.get()), std::move(value.get()));
  }
  features.push_back(std::move(feature));
}

}  // namespace orvane::nimbrel::config
