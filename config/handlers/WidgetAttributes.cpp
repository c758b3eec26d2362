#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

#include "config/Namespaces.h"
#include "config/NimbrelConfigParser.h"
#include "config/Report.h"
#include "config/RuleReaders.h"

namespace orvane::nimbrel::config {

using util::Option;

void NimbrelConfigParser::processWidgetAttributes(const std::shared_ptr<util::XmlNode>& root) {
  BasicConfig& target = record();
  const detail::Report lost(observation.get(), root.get());
  const auto attribute = [&](const char* name, const char* namespaceUri = nullptr) {
    return rules.getSingleAttributeValue(root, namespaceUri, name);
  };

  const Option<std::string> defaultLocale = attribute("defaultlocale");
  if (defaultLocale && defaultLocale.get().empty()) {
    lost(LegacyCode::DEFAULTLOCALE_EMPTY, "defaultlocale", defaultLocale,
         "An empty value names no language.");
  }
  target.id().take(readIri(*root, "id", LegacyCode::ID_NOT_IRI));
  target.version().take(rules.getSingleDisplayableAttributeValue(root, nullptr, "version"));
  if (target.version() && target.version().get().empty()) {
    target.version().reset();
    lost(LegacyCode::VERSION_EMPTY, "version", "", "An empty version is none.");
  }
  Option<std::string> applicationId = attribute("applicationId", EXTENSION_NAMESPACE);
  if (applicationId) {
    if (rules.isValidTavloApplicationId(applicationId.get().c_str())) {
      target.tavloApplicationId().take(std::move(applicationId));
    } else {
      lost(LegacyCode::APPLICATION_ID, "tavlo:applicationId", applicationId,
           "The store's ids are 1 to 32 lower-case ASCII letters and digits.");
    }
  }
  const Option<std::string> applicationVersion =
      attribute("applicationVersion", EXTENSION_NAMESPACE);
  if (applicationVersion) {
    // Unlike a size, a text that is no number counts as 0 here, and 0 is a version.
    target.tavloApplicationVersion() =
        detail::readNumber(applicationVersion.get(), "tavlo:applicationVersion", lost);
  }
  for (auto [name, size] : {std::pair("height", &target.height()), {"width", &target.width()}}) {
    *size = detail::readSize(detail::trimmedAttribute(*root, name), name, lost);
  }
  processViewMode(attribute("viewmodes"));
  processDefaultLocale(defaultLocale);  // last, as it appends: all else may be done again
}

void NimbrelConfigParser::processDefaultLocale(const Option<std::string>& defaultLocale) {
  std::vector<std::string>& locales = record().userAgentLocales();
  locales.reserve(locales.size() + 2);
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
  const std::vector<std::string> keywords = rules.parseListOfKeywords(viewModes.get().c_str());
  std::vector<std::string> distinct;
  distinct.reserve(keywords.size());
  std::set<std::string_view> seen;
  for (const std::string& keyword : keywords) {
    if (seen.insert(keyword).second) {
      distinct.push_back(keyword);
    } else if (observation != nullptr) {
      const detail::Report lost(observation.get(), target.document()->getDocumentElement().get());
      lost(LegacyCode::REPEATED_VIEWMODE, "viewmodes", keyword, "The first of each counts.");
    }
  }
  distinct.shrink_to_fit();  // no room is kept for repeated ones
  target.windowModes() = std::move(distinct);
}

Option<unsigned int> parseWidthOrHeight(const ConfigRules& /*rules*/,
                                        const Option<std::string>& value) {
  return value ? detail::readSize(value.get()) : Option<unsigned int>();
}

}  // namespace orvane::nimbrel::config
