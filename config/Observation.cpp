#include "config/Observation.h"

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

void Observation::tell(FindingCode code, const util::XmlNode& element, std::string_view attribute,
                       std::string_view value, std::string_view reason,
                       std::string_view suggestion) {
  const std::string name = nameOf(element);
  tell({code, name, attribute, element.getLineNumber(), 0, value, reason, suggestion});
}

void Observation::tell(const Finding& finding) {
  if (!again_) {
    observer_->notice(finding);
  }
}

}  // namespace orvane::nimbrel::config::detail
