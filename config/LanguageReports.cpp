#include "config/LanguageReports.h"

#include <string>
#include <string_view>
#include <unordered_set>

#include "config/Namespaces.h"

namespace orvane::nimbrel::config::detail {
namespace {

using util::XmlNode;

std::string_view languageOf(const XmlNode& element) noexcept {
  return element.attributeView("lang", XML_NAMESPACE);
}

std::string nameOf(const XmlNode& element) {
  return findingName(element.nameView(), element.namespaceView());
}

}  // namespace

void reportLater(const XmlNode* element, Observation* observation) {
  if (observation == nullptr || element == nullptr) {
    return;
  }
  const Report lost(observation, element);
  const XmlNode* const first = observation->firstLike(*element);
  if (first == element) {
    lost(LegacyCode::REPEATED_ELEMENT, "An earlier document had one, and the parser keeps to it.");
  } else if (first == nullptr || languageOf(*first) == languageOf(*element)) {
    lost(LegacyCode::REPEATED_ELEMENT, "Only the first one counts, good or bad.");
  } else {
    lost(LegacyCode::BETTER_LANGUAGE, "The user prefers the language of another one.");
  }
}

void reportUnheard(const XmlNode& root, const std::vector<std::shared_ptr<XmlNode>>& heard,
                   Observation& observation) {
  std::unordered_set<const XmlNode*> nodes;
  std::unordered_set<std::string> names;
  for (const std::shared_ptr<XmlNode>& node : heard) {
    nodes.insert(node.get());
    names.insert(nameOf(*node));
  }
  for (const XmlNode* child = root.firstElementChild(); child != nullptr;
       child = child->nextElementSibling()) {
    if (nodes.count(child) != 0) {
      continue;
    }
    const Report lost(&observation, child);
    if (names.count(nameOf(*child)) != 0) {
      lost(LegacyCode::OTHER_LANGUAGE, "xml:lang", languageOf(*child),
           "The user does not ask for this language; another one stands in.");
    } else {
      lost(LegacyCode::LANGUAGE_LOST, "xml:lang", languageOf(*child),
           "The user does not ask for this language, and no other one stands in.");
    }
  }
}

}  // namespace orvane::nimbrel::config::detail
