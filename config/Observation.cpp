#include "config/Observation.h"

#include <optional>

#include "config/Namespaces.h"

namespace orvane::nimbrel::config::detail {

std::string findingName(std::string_view name, std::string_view namespaceUri) {
  std::string result = namespaceUri == EXTENSION_NAMESPACE ? "tavlo:" : "";
  result += name;
  return result;
}

namespace {

std::string nameOf(const util::XmlNode& element) {
  return findingName(element.nameView(), element.namespaceView());
}

/// Nothing for what the checker finds in the tree.
std::optional<FindingCode> codeOf(LegacyCode code, std::string_view attribute) {
  switch (code) {
    case LegacyCode::DOCUMENT_REFUSED:
      return FindingCode::DOCUMENT_REJECTED;
    case LegacyCode::ROOT_NOT_WIDGET:
      return FindingCode::WRONG_ROOT;
    case LegacyCode::REQUIRED_FEATURE_NAME:
      return FindingCode::REQUIRED_FEATURE_NAME;
    case LegacyCode::COUNTER_REFUSED:
      return FindingCode::NUMBER_REJECTED;
    case LegacyCode::CONTENT_WITHOUT_SRC:
    case LegacyCode::ICON_WITHOUT_SRC:
    case LegacyCode::PREFERENCE_WITHOUT_NAME:
    case LegacyCode::FEATURE_WITHOUT_NAME:
    case LegacyCode::PARAM_INCOMPLETE:
    case LegacyCode::ACCESS_WITHOUT_ORIGIN:
    case LegacyCode::EXPORT_WITHOUT_RESOURCE:
    case LegacyCode::MISSING_ATTRIBUTE:
      return FindingCode::MISSING_ATTRIBUTE;
    case LegacyCode::VERSION_EMPTY:
    case LegacyCode::DEFAULTLOCALE_EMPTY:
      return FindingCode::EMPTY_VALUE;
    case LegacyCode::ID_NOT_IRI:
    case LegacyCode::HREF_NOT_IRI:
    case LegacyCode::FEATURE_NAME:
      return FindingCode::NOT_AN_IRI;
    case LegacyCode::ORIGIN_NOT_IRI:
    case LegacyCode::ORIGIN_TOO_LONG:
    case LegacyCode::ORIGIN_WITHOUT_HOST:
    case LegacyCode::ORIGIN_WITHOUT_PORT:
    case LegacyCode::HOST_WITHOUT_ASCII:
      return FindingCode::NOT_AN_ORIGIN;
    case LegacyCode::NUMBER_DROPPED:
      return FindingCode::NOT_A_NUMBER;
    case LegacyCode::VALUE_REFUSED:
      return FindingCode::OUT_OF_RANGE;
    case LegacyCode::NOT_BOOLEAN:
      return FindingCode::NOT_A_BOOLEAN;
    case LegacyCode::APPLICATION_ID:
      return FindingCode::INVALID_APPLICATION_ID;
    case LegacyCode::UNKNOWN_WORD:
      return FindingCode::UNKNOWN_WORD;
    case LegacyCode::UNKNOWN_KEY:
      return FindingCode::UNKNOWN_KEY;
    case LegacyCode::UNKNOWN_ELEMENT:
    case LegacyCode::FOREIGN_ELEMENT:
      return FindingCode::UNKNOWN_ELEMENT;
    case LegacyCode::UNEXPECTED_CHILD:
      return FindingCode::UNEXPECTED_CHILD;
    case LegacyCode::BETTER_LANGUAGE:
    case LegacyCode::REPEATED_ELEMENT:
    case LegacyCode::REPEATED_ICON:
    case LegacyCode::REPEATED_PREFERENCE:
    case LegacyCode::REPEATED_EXPORT:
    case LegacyCode::REPEATED_VIEWMODE:
      return FindingCode::REPEATED;
    case LegacyCode::REPEATED_KEY:  // a flag that is raised already; others are found in the tree
      return attribute == "value" ? std::optional(FindingCode::REPEATED) : std::nullopt;
    case LegacyCode::BETTER_DENSITY:
      return FindingCode::UNUSED_SETTING;
    default:
      return std::nullopt;
  }
}

}  // namespace

void Observation::beginDocument() {
  again_ = false;
  visited_.clear();
  first_.clear();
  keys_.clear();
}

void Observation::visit(const util::XmlNode& element) {
  again_ = !visited_.insert(&element).second;
  first_.try_emplace(nameOf(element), &element);
}

const util::XmlNode* Observation::firstLike(const util::XmlNode& element) const {
  const auto found = first_.find(nameOf(element));
  return found == first_.end() ? nullptr : found->second;
}

bool Observation::isRepeated(const util::XmlNode& parent, std::string_view key) {
  return !again_ && !keys_.emplace(nameOf(parent), key).second;
}

void Observation::tell(LegacyCode code, const util::XmlNode& element, std::string_view attribute,
                       std::string_view value, std::string_view reason,
                       std::string_view suggestion) {
  const std::string name = nameOf(element);
  tell({code, name, attribute, element.getLineNumber(), 0, value, reason, suggestion}, &element);
}

void Observation::tell(const LegacyFinding& finding, const util::XmlNode* element) {
  if (again_) {
    return;
  }
  observer_->notice(finding);
  const std::optional<FindingCode> code = codeOf(finding.code, finding.attribute);
  if (code) {
    observer_->onFinding(
        {*code, element, finding.attribute, finding.value, finding.line, finding.column,
         *code == FindingCode::DOCUMENT_REJECTED ? finding.reason : std::string_view()});
  }
}

}  // namespace orvane::nimbrel::config::detail
