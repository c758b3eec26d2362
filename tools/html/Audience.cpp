#include "tools/html/Audience.h"

#include <unicode/uloc.h>
#include <unicode/ustring.h>

#include <cstdint>
#include <memory>
#include <new>
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

namespace {

/// The English name of a language; empty when there is none.
std::string languageName(const std::string& tag) {
  char locale[ULOC_FULLNAME_CAPACITY];
  std::int32_t parsed = 0;
  UErrorCode status = U_ZERO_ERROR;
  uloc_forLanguageTag(tag.c_str(), locale, ULOC_FULLNAME_CAPACITY, &parsed, &status);
  UChar name[128];
  const std::int32_t length = uloc_getDisplayName(locale, "en", name, 128, &status);
  if (status == U_MEMORY_ALLOCATION_ERROR) {
    throw std::bad_alloc();
  }
  // Of a language that has no name the tag is all that is known.
  const bool isKnown = U_SUCCESS(status) && length > 0 && length < 128 &&
                       static_cast<std::size_t>(parsed) == tag.size();
  char text[512];
  u_strToUTF8(text, sizeof(text), nullptr, name, isKnown ? length : 0, &status);
  return isKnown && U_SUCCESS(status) ? text : "";
}

}  // namespace

void printAudience(HtmlWriter& html, const Audience& audience, bool isOnly) {
  constexpr std::size_t LONGEST = 60;
  const char* separator = "";
  for (const std::string& locale : audience.locales) {
    const std::string name = languageName(locale);
    html.text(separator).text(name).text(name.empty() ? "" : " (");
    html.markup("<bdi class=\"tag\">").text(locale, LONGEST).markup("</bdi>");
    html.text(name.empty() ? "" : ")");
    separator = ", ";
  }
  if (audience.hasOthers) {
    html.text(audience.locales.empty() ? "" : " and ");
    html.text(isOnly && audience.locales.empty() ? "every language" : "every other language");
  }
}

}  // namespace orvane::nimbrel::tools
