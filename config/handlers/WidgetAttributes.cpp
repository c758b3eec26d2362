#include <algorithm>
#include <string_view>
#include <utility>

#include "config/KeyIndex.h"
#include "config/Namespaces.h"
#include "config/NimbrelConfigParser.h"
#include "config/RuleReaders.h"

namespace orvane::nimbrel::config {

using util::Option;

void NimbrelConfigParser::processWidgetAttributes(const std::shared_ptr<util::XmlNode>& root) {
  BasicConfig& target = record();
  const auto attribute = [&](const char* name, const char* namespaceUri = nullptr) {
    return rules.getSingleAttributeValue(root, namespaceUri, name);
  };

  processDefaultLocale(attribute("defaultlocale"));
  target.id() = readIri(*root, "id");
  target.version() = rules.getSingleDisplayableAttributeValue(root, nullptr, "version");
  if (target.version() && target.version().get().empty()) {
    target.version().reset();
  }
  Option<std::string> applicationId = attribute("applicationId", EXTENSION_NAMESPACE);
  if (applicationId && rules.isValidTavloApplicationId(applicationId.get().c_str())) {
    target.tavloApplicationId() = std::move(applicationId);
  }
  const Option<std::string> applicationVersion =
      attribute("applicationVersion", EXTENSION_NAMESPACE);
  if (applicationVersion) {
    // Unlike a size, a text that is no number counts as 0 here, and 0 is a version.
    const internal::IntegerReading reading =
        internal::readNonNegativeInteger(applicationVersion.get());
    if (reading.fault == internal::IntegerFault::NONE) {
      target.tavloApplicationVersion() = reading.value;
    }
  }
  target.height() = internal::readSize(internal::trimmedAttribute(*root, "height"));
  target.width() = internal::readSize(internal::trimmedAttribute(*root, "width"));
  processViewMode(attribute("viewmodes"));
}

void NimbrelConfigParser::processDefaultLocale(const Option<std::string>& defaultLocale) {
  std::vector<std::string>& locales = record().userAgentLocales();
  if (defaultLocale && !defaultLocale.get().empty() &&
      std::find(locales.begin(), locales.end(), defaultLocale.get()) == locales.end()) {
    locales.push_back(defaultLocale.get());
  }
  locales.emplace_back("*");
}

void NimbrelConfigParser::processViewMode(const Option<std::string>& viewModes) {
  BasicConfig& target = record();
  if (!viewModes) {
    return;
  }
  std::vector<std::string> distinct;
  internal::KeyIndex seen;
  const auto itself = [](const std::string& keyword) -> std::string_view { return keyword; };
  for (std::string& keyword : rules.parseListOfKeywords(viewModes.get().c_str())) {
    if (!seen.contains(distinct, itself, keyword)) {
      distinct.push_back(std::move(keyword));
    }
  }
  target.windowModes() = std::move(distinct);
}

Option<unsigned int> parseWidthOrHeight(const ConfigRules& /*rules*/,
                                        const Option<std::string>& value) {
  return value ? internal::readSize(value.get()) : Option<unsigned int>();
}

}  // namespace orvane::nimbrel::config
