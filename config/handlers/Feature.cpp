#include <utility>

#include "config/ConfigParser.h"
#include "config/Namespaces.h"
#include "config/handlers/Elements.h"

namespace orvane::nimbrel::config::detail {
namespace feature {

enum : std::uint8_t { NAME_OF_FEATURE, REQUIRED };
constexpr AttributeDescription ATTRIBUTES[] = {
    neededAttribute("name", ValueKind::IRI, "name"),
    optionalAttribute("required", ValueKind::BOOLEAN, "required"),
};

enum : std::uint8_t { KEY, VALUE };
constexpr AttributeDescription PARAM_ATTRIBUTES[] = {
    neededAttribute("name", ValueKind::TEXT, "params[].name"),
    neededAttribute("value", ValueKind::TEXT, "params[].value"),
};
constexpr ChildDescription CHILDREN[] = {{"param", PARAM_ATTRIBUTES}};

/// Appends what a child of a feature says, if it is a parameter with all that it needs.
static void readParam(const util::XmlNode& child, const ElementReader& reader,
                      Config::Feature& feature) {
  if (child.nameView() != CHILDREN[0].name || child.namespaceView() != W3C_WIDGETS_NAMESPACE) {
    reader.report(FindingCode::UNKNOWN_ELEMENT);
    return;
  }
  util::Option<std::string> key = reader.filledText(PARAM_ATTRIBUTES[KEY]);
  if (key) {
    util::Option<std::string> value = reader.presentText(PARAM_ATTRIBUTES[VALUE]);
    if (value) {
      feature.params.emplace_back(std::move(key.get()), std::move(value.get()));
    }
  }
}

static bool handle(HandlerContext& context, const Node& node) {
  const ElementReader reader = context.readerOf(*node);
  util::Option<std::string> name = reader.presentText(ATTRIBUTES[NAME_OF_FEATURE]);
  if (!name) {
    return false;
  }
  Config::Feature feature;
  feature.required = reader.boolean(ATTRIBUTES[REQUIRED]).value_or(true);
  if (!context.iriParser.tryParse(name.c_str(), context.idIri)) {
    if (feature.required) {
      reader.report(FindingCode::REQUIRED_FEATURE_NAME, ATTRIBUTES[NAME_OF_FEATURE], name);
      throw ConfigParser::ConfigException("Feature name is not a valid IRI.", node->getLineNumber(),
                                          0U);
    }
    return reader.report(FindingCode::NOT_AN_IRI, ATTRIBUTES[NAME_OF_FEATURE], name);
  }
  feature.name = std::move(name.get());
  for (const util::XmlNode* child = node->firstElementChild(); child != nullptr;
       child = child->nextElementSibling()) {
    readParam(*child, context.readerOf(*child), feature);
  }
  append(context.record.features(), std::move(feature));
  return true;
}

}  // namespace feature

const KnownElement FEATURE = w3cElement("feature", Repetition::ADDS, feature::handle, "features[]",
                                        feature::ATTRIBUTES, NO_TEXT, feature::CHILDREN);

}  // namespace orvane::nimbrel::config::detail
