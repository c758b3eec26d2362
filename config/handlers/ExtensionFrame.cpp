#include "config/handlers/ExtensionFrame.h"

namespace orvane::nimbrel::config::detail {

bool ExtensionFrame::stopAtElement(const util::XmlNode& child, const ChildRule& rule,
                                   const Report& lost) const {
  parser_.setError(rule.wrongElement);
  if (lost) {
    Suggestion suggestion(child.nameView());
    std::string expected;
    for (const char* const name : {rule.element, rule.other}) {
      if (name != nullptr) {
        suggestion.consider(name);
        expected +=
            (expected.empty() ? "<" : " and <") + findingName(name, EXTENSION_NAMESPACE) + ">";
      }
    }
    lost(LegacyCode::UNEXPECTED_CHILD,
         "Only " + expected + " may stand here: the parent is read no further.",
         suggestion.get().empty() ? "" : findingName(suggestion.get(), EXTENSION_NAMESPACE));
  }
  return false;
}

bool ExtensionFrame::stopAtAttribute(const char* error, std::string_view attribute,
                                     const Report& lost) const {
  parser_.setError(error);
  lost(LegacyCode::MISSING_ATTRIBUTE, attribute, std::string_view(),
       "The attribute must be there: the parent is read no further.");
  return false;
}

void ExtensionFrame::reportNotReached(const util::XmlNode* child) const {
  for (; child != nullptr; child = child->nextElementSibling()) {
    Report(observation_, child)(LegacyCode::NOT_REACHED,
                                "An earlier child is faulty: this one is not read.");
  }
}

}  // namespace orvane::nimbrel::config::detail
