#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

#include "config/RuleReaders.h"
#include "config/handlers/KnownElement.h"

namespace orvane::nimbrel::config {
namespace detail {
namespace {

enum : std::uint8_t {
  ID,
  VERSION,
  WIDTH,
  HEIGHT,
  VIEW_MODES,
  DEFAULT_LOCALE,
  APPLICATION_ID,
  APPLICATION_VERSION
};
constexpr AttributeDescription ATTRIBUTES[] = {
    {"id", ValueKind::IRI, false, "id"},
    {"version", ValueKind::TEXT, false, "version"},
    {"width", ValueKind::SIZE, false, "width"},
    {"height", ValueKind::SIZE, false, "height"},
    {"viewmodes", ValueKind::KEYWORDS, false, "windowModes[]"},
    {"defaultlocale", ValueKind::LANGUAGE, false, "userAgentLocales[]"},
    {"applicationId", ValueKind::APPLICATION_ID, false, "tavloApplicationId", true},
    {"applicationVersion", ValueKind::NUMBER, false, "tavloApplicationVersion", true},
};
constexpr ElementDescription WIDGET = {"widget", false, Repetition::FIRST_COUNTS, {}, ATTRIBUTES};

}  // namespace
}  // namespace detail

const ElementDescription& widgetDescription() noexcept {
  return detail::WIDGET;
}

using util::Option;

void NimbrelConfigParser::processWidgetAttributes(const std::shared_ptr<util::XmlNode>& root) {
  BasicConfig& target = record();
  const detail::Reporter report = reporterOf(root);
  const auto attribute = [&](std::size_t index) {
    return detail::readAttribute(root, detail::ATTRIBUTES[index]);
  };

  const Option<std::string> defaultLocale = attribute(detail::DEFAULT_LOCALE);
  if (defaultLocale && defaultLocale.get().empty()) {
    report(FindingCode::EMPTY_VALUE, detail::ATTRIBUTES[detail::DEFAULT_LOCALE], defaultLocale);
  }
  target.id() = readIri(root, detail::ATTRIBUTES[detail::ID]);
  target.version() = rules.getSingleDisplayableAttributeValue(root, nullptr, "version");
  if (target.version() && target.version().get().empty()) {
    target.version().reset();
    report(FindingCode::EMPTY_VALUE, detail::ATTRIBUTES[detail::VERSION], "");
  }
  Option<std::string> applicationId = attribute(detail::APPLICATION_ID);
  if (applicationId) {
    if (rules.isValidTavloApplicationId(applicationId.get().c_str())) {
      target.tavloApplicationId() = std::move(applicationId);
    } else {
      report(FindingCode::INVALID_APPLICATION_ID, detail::ATTRIBUTES[detail::APPLICATION_ID],
             applicationId);
    }
  }
  const Option<std::string> applicationVersion = attribute(detail::APPLICATION_VERSION);
  if (applicationVersion) {
    // Unlike a size, a text that is no number counts as 0 here, and 0 is a version.
    target.tavloApplicationVersion() = detail::readNumber(
        applicationVersion.get(), detail::ATTRIBUTES[detail::APPLICATION_VERSION], report);
  }
  target.height() = detail::readSizeAttribute(*root, detail::ATTRIBUTES[detail::HEIGHT], report);
  target.width() = detail::readSizeAttribute(*root, detail::ATTRIBUTES[detail::WIDTH], report);
  processViewMode(attribute(detail::VIEW_MODES));
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
    } else if (observer_ != nullptr && target.document() != nullptr) {
      reporterOf(target.document()->getDocumentElement())(
          FindingCode::REPEATED, detail::ATTRIBUTES[detail::VIEW_MODES], keyword);
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
