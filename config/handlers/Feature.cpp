#include <utility>

#include "config/Namespaces.h"
#include "config/RuleReaders.h"
#include "config/handlers/KnownElement.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

enum : std::uint8_t { NAME, REQUIRED };
constexpr AttributeDescription ATTRIBUTES[] = {
    {"name", ValueKind::IRI, true, "features[].name"},
    {"required", ValueKind::BOOLEAN, false, "features[].required"},
};

constexpr AttributeDescription PARAM_ATTRIBUTES[] = {
    {"name", ValueKind::TEXT, true, "features[].params[].name"},
    {"value", ValueKind::TEXT, true, "features[].params[].value"},
};
constexpr ChildDescription CHILDREN[] = {{"param", PARAM_ATTRIBUTES}};

}  // namespace

extern const KnownElement FEATURE;
const KnownElement FEATURE = {{"feature", false, Repetition::ADDS, {}, ATTRIBUTES, {}, CHILDREN},
                              callMember<&NimbrelConfigParser::processFeature>};

}  // namespace detail

void NimbrelConfigParser::processFeature(const std::shared_ptr<util::XmlNode>& node) {
  std::vector<Config::Feature>& features = record().features();
  util::Option<std::string> name = detail::readAttribute(node, detail::ATTRIBUTES[detail::NAME]);
  const detail::Reporter report = reporterOf(node);
  if (!name) {
    return report(FindingCode::MISSING_ATTRIBUTE, detail::ATTRIBUTES[detail::NAME]);
  }
  Config::Feature feature;
  feature.required =
      detail::readBooleanAttribute(*node, detail::ATTRIBUTES[detail::REQUIRED], report)
          .value_or(true);
  if (!iriParser->tryParse(name.get().c_str(), idIri)) {
    if (feature.required) {
      report(FindingCode::REQUIRED_FEATURE_NAME, detail::ATTRIBUTES[detail::NAME], name);
      throw ConfigException("Feature name is not a valid IRI.", node->getLineNumber(), 0U);
    }
    return report(FindingCode::NOT_AN_IRI, detail::ATTRIBUTES[detail::NAME], name);
  }
  feature.name = std::move(name.get());
  for (const util::XmlNode* child = node->firstElementChild(); child != nullptr;
       child = child->nextElementSibling()) {
    const detail::Reporter reportParam(observer_.get(), child);
    if (child->nameView() != "param" || child->namespaceView() != W3C_WIDGETS_NAMESPACE) {
      reportParam(FindingCode::UNKNOWN_ELEMENT);
      continue;
    }
    util::Option<std::string> key = detail::readAttribute(*child, detail::PARAM_ATTRIBUTES[0]);
    if (!key || key.get().empty()) {
      reportParam(FindingCode::MISSING_ATTRIBUTE, detail::PARAM_ATTRIBUTES[0], key);
      continue;
    }
    util::Option<std::string> value = detail::readAttribute(*child, detail::PARAM_ATTRIBUTES[1]);
    if (!value) {
      reportParam(FindingCode::MISSING_ATTRIBUTE, detail::PARAM_ATTRIBUTES[1]);
      continue;
    }
    feature.params.emplace_back(std::move(key.get()), std::move(value.get()));
  }
  features.push_back(std::move(feature));
}

}  // namespace orvane::nimbrel::config
