#include <algorithm>
#include <utility>

#include "config/handlers/Elements.h"

namespace orvane::nimbrel::config::detail {
namespace widget {

constexpr AttributeDescription inExtension(AttributeDescription attribute) noexcept {
  attribute.isExtension = true;
  return attribute;
}

enum : std::uint8_t { ID, VERSION, WIDTH, HEIGHT, MODES, LOCALE, APPLICATION, APPLICATION_VERSION };
constexpr AttributeDescription ATTRIBUTES[] = {
    optionalAttribute("id", ValueKind::IRI, "id"),
    optionalAttribute("version", ValueKind::TEXT, "version"),
    optionalAttribute("width", ValueKind::SIZE, "width"),
    optionalAttribute("height", ValueKind::SIZE, "height"),
    optionalAttribute("viewmodes", ValueKind::KEYWORDS, "windowModes[]"),
    optionalAttribute("defaultlocale", ValueKind::LANGUAGE, "userAgentLocales[]"),
    inExtension(
        optionalAttribute("applicationId", ValueKind::APPLICATION_ID, "tavloApplicationId")),
    inExtension(
        optionalAttribute("applicationVersion", ValueKind::NUMBER, "tavloApplicationVersion")),
};

static bool handle(HandlerContext& context, const Node& root) {
  BasicConfig& record = context.record;
  const ElementReader reader = context.readerOf(*root);

  const util::Option<std::string> defaultLocale = reader.text(ATTRIBUTES[LOCALE]);
  if (defaultLocale && defaultLocale.get().empty()) {
    reader.report(FindingCode::EMPTY_VALUE, ATTRIBUTES[LOCALE], defaultLocale);
  }
  completeLocales(record, defaultLocale);
  record.id() = reader.text(ATTRIBUTES[ID]);
  if (record.id() && !context.iriParser.tryParse(record.id().c_str(), context.idIri)) {
    reader.report(FindingCode::NOT_AN_IRI, ATTRIBUTES[ID], record.id());
    record.id().reset();
  }
  record.version() = context.rules.getSingleDisplayableAttributeValue(root, nullptr, "version");
  if (record.version() && record.version().get().empty()) {
    record.version().reset();
    reader.report(FindingCode::EMPTY_VALUE, ATTRIBUTES[VERSION], "");
  }
  util::Option<std::string> applicationId = reader.text(ATTRIBUTES[APPLICATION]);
  if (applicationId && context.rules.isValidTavloApplicationId(applicationId.c_str())) {
    record.tavloApplicationId() = std::move(applicationId);
  } else if (applicationId) {
    reader.report(FindingCode::INVALID_APPLICATION_ID, ATTRIBUTES[APPLICATION], applicationId);
  }
  // Unlike a size, a text that is no number counts as 0 here, and 0 is a version.
  record.tavloApplicationVersion() = reader.number(ATTRIBUTES[APPLICATION_VERSION]);
  record.height() = reader.size(ATTRIBUTES[HEIGHT]);
  record.width() = reader.size(ATTRIBUTES[WIDTH]);
  readViewModes(context, reader.text(ATTRIBUTES[MODES]));
  return true;
}

}  // namespace widget

const KnownElement WIDGET =
    w3cElement("widget", Repetition::FIRST_COUNTS, widget::handle, NO_MEMBER, widget::ATTRIBUTES);

void completeLocales(BasicConfig& record, const util::Option<std::string>& defaultLocale) {
  std::vector<std::string>& locales = record.userAgentLocales();
  locales.reserve(locales.size() + 2);
  if (defaultLocale && !defaultLocale.get().empty() &&
      std::find(locales.begin(), locales.end(), defaultLocale.get()) == locales.end()) {
    locales.push_back(defaultLocale.get());
  }
  locales.emplace_back("*");
}

void readViewModes(const HandlerContext& context, const util::Option<std::string>& viewModes) {
  if (!viewModes) {
    return;
  }
  std::vector<std::string> keywords = context.rules.parseListOfKeywords(viewModes.c_str());
  std::vector<std::string> distinct;
  distinct.reserve(keywords.size());
  KeyIndex<std::string> known(distinct);
  for (std::string& keyword : keywords) {
    if (known.insert(keyword)) {
      distinct.push_back(std::move(keyword));
    } else if (context.record.document() != nullptr) {
      const Node root = context.record.document()->getDocumentElement();
      context.readerOf(*root).report(FindingCode::REPEATED, widget::ATTRIBUTES[widget::MODES],
                                     keyword);
    }
  }
  distinct.shrink_to_fit();  // no room is kept for repeated ones
  context.record.windowModes() = std::move(distinct);
}

}  // namespace orvane::nimbrel::config::detail
