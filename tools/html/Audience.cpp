#include "tools/html/Audience.h"

#include <memory>
#include <set>
#include <string_view>

#include "config/Namespaces.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::tools {

std::vector<Audience> audiencesOf(const util::XmlDocument& document,
                                  const std::string& defaultLocale) {
  std::vector<Audience> audiences(1);
  audiences.front().hasOthers = true;
  // "*" is nobody's language: the parser's sign for elements without one.
  std::set<std::string_view> known = {"", "*"};
  if (!defaultLocale.empty()) {
    audiences.front().locales.push_back(defaultLocale);
    known.insert(defaultLocale);
  }
  const std::shared_ptr<util::XmlNode> root = document.getDocumentElement();
  for (const util::XmlNode* child = root->firstElementChild(); child != nullptr;
       child = child->nextElementSibling()) {
    const std::string_view language = child->attributeView("lang", config::XML_NAMESPACE);
    if (known.insert(language).second) {
      audiences.push_back({{std::string(language)}, false});
    }
  }
  return audiences;
}

void printAudience(HtmlWriter& html, const Audience& audience, bool isOnly) {
  constexpr std::size_t LONGEST = 60;
  const char* separator = "";
  for (const std::string& locale : audience.locales) {
    html.text(separator).markup("<bdi class=\"tag\">").text(locale, LONGEST).markup("</bdi>");
    separator = ", ";
  }
  if (audience.hasOthers) {
    html.text(audience.locales.empty() ? "" : " and ");
    html.text(isOnly && audience.locales.empty() ? "every language" : "every other language");
  }
}

}  // namespace orvane::nimbrel::tools
