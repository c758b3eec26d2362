#include "tools/html/ApplicationView.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <memory>
#include <set>

#include "config/ConfigRules.h"
#include "config/Namespaces.h"
#include "tools/record/RecordText.h"
#include "util/Ascii.h"
#include "util/LocalizableString.h"
#include "util/Option.h"
#include "util/UnicodeUtilICU.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::tools {
namespace {

using config::Config;
using util::LocalizableString;
using util::Option;

// In characters.
constexpr std::size_t TAG = 60;
constexpr std::size_t LINE = 300;
constexpr std::size_t PARAGRAPH = 800;
constexpr std::size_t LICENSE = 4000;

/// The English name of a language; empty when there is none.
std::string languageName(const std::string& tag) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Locale locale = icu::Locale::forLanguageTag(tag, status);
  icu::UnicodeString name;
  std::string text;
  return U_SUCCESS(status)
             ? locale.getDisplayName(icu::Locale::getEnglish(), name).toUTF8String(text)
             : text;
}

/// A paragraph of a class, in the language and direction of its text.
template <std::size_t N>
void paragraph(HtmlWriter& html, const char (&name)[N], const LocalizableString& text,
               std::size_t limit) {
  html.markup("<p class=\"").markup(name).markup("\"");
  html.language(text.getLanguageTag(), text.getDirection()).markup(">");
  html.localized(text, limit).markup("</p>");
}

/// Collects facts.
struct FactList {
  Facts& facts;

  HtmlWriter& add(std::string_view term) { return facts.emplace_back(term, HtmlWriter()).second; }
  void add(std::string_view term, const std::string& value) { add(term).value(value, LINE); }
  void add(std::string_view term, unsigned int value) { add(term).number(value); }
  void add(std::string_view term, const LocalizableString& value) {
    if (!value.empty()) {
      add(term).localized(value, LINE);
    }
  }
  template <typename Value>
  void add(std::string_view term, const Option<Value>& value, std::string_view unit = {}) {
    if (value) {
      add(term, value.get());
      facts.back().second.text(unit);
    }
  }

  void addDescription(const Option<LocalizableString>& text) {
    HtmlWriter& html = add("Description");
    if (text && !text.get().empty()) {
      paragraph(html, "prose", text.get(), PARAGRAPH);
    } else {
      html.markup("<span class=\"none\">none</span>");
    }
  }

  void addLicense(const Config::License& license) {
    add("License at", license.href);
    if (!license.text.empty()) {
      HtmlWriter& html = add("License");
      html.markup("<details><summary>Text</summary>\n");
      paragraph(html, "prose", license.text, LICENSE);
      html.markup("</details>");
    }
  }

  void addStartFile(const Config::StartFile& file) {
    HtmlWriter& html = add("Starts with");
    html.value(file.src, LINE);
    for (const std::string& detail : {file.type, file.encoding}) {
      if (!detail.empty()) {
        html.markup(", ").value(detail, LINE);
      }
    }
  }

  void addIcons(const std::vector<Config::Icon>& icons, const IconChoice& choice) {
    constexpr std::size_t MOST = 8;
    if (icons.empty() && choice.image == nullptr) {
      return;
    }
    HtmlWriter& html = add("Icons");
    for (std::size_t i = 0; i < std::min(icons.size(), MOST); ++i) {
      html.text(i == 0 ? "" : "\n").value(icons[i].src, LINE);
      if (icons[i].width && icons[i].height) {
        html.text(", ").number(icons[i].width.get()).text(" × ").number(icons[i].height.get());
      }
      if (i < choice.problems.size()) {
        html.markup("\n<span class=\"why\">not shown: ").text(choice.problems[i]);
        html.markup("</span>");
      }
    }
    if (icons.size() > MOST) {
      html.markup("\n<span class=\"cut\">and ").count(icons.size() - MOST, "more icon");
      html.markup("</span>");
    }
    if (choice.image != nullptr) {
      html.text(icons.empty() ? "" : "\n").markup("<span class=\"why\">shown: ");
      html.value(choice.path, LINE).markup(", ");
      html.text(choice.isDefault ? "a file that is the icon by default" : "the first that can be");
      html.markup("</span>");
    }
  }
};

void printFace(HtmlWriter& html, const Config& record, const IconChoice& icon, bool hasPackage) {
  html.markup("<div class=\"face\"");
  if (record.getName()) {  // its direction decides on which side the icon stands
    html.language(record.getName().get().getLanguageTag(), record.getName().get().getDirection());
  }
  html.markup(">\n");
  if (icon.image != nullptr) {
    // The name beside it says all that there is to say.
    html.markup("<img class=\"icon\" alt=\"\" src=\"data:").text(icon.image->type);
    html.markup(";base64,").base64(icon.image->bytes).markup("\"/>\n");
  } else if (hasPackage) {
    html.markup("<p class=\"icon none\" lang=\"en\" dir=\"ltr\">");
    html.text(record.getIcons().empty() ? "No icon" : "Icon not shown").markup("</p>\n");
  }
  if (record.getName() && !record.getName().get().empty()) {
    paragraph(html, "name", record.getName().get(), LINE);
  } else {
    html.markup("<p class=\"name none\" lang=\"en\" dir=\"ltr\">No name</p>");
  }
  html.markup("\n</div>\n");
}

}  // namespace

std::vector<Audience> audiencesOf(const util::XmlDocument& document) {
  std::vector<Audience> audiences = {{{}, true}};
  // "*" is nobody's language: the parser's sign for elements without one.
  std::set<std::string_view> known = {"", "*"};
  const std::shared_ptr<util::XmlNode> root = document.getDocumentElement();
  const Option<std::string> defaultLocale =
      config::ConfigRules(std::make_shared<util::UnicodeUtilICU>())
          .getSingleAttributeValue(root, nullptr, "defaultlocale");
  if (defaultLocale && !defaultLocale.get().empty()) {
    audiences.front().locales.push_back(defaultLocale.get());
    known.insert(defaultLocale.get());
  }
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
  const char* separator = "";
  std::string last;
  for (const std::string& locale : audience.locales) {
    using util::ascii::lowerCased;
    if ((lowerCased(last) + '-').rfind(lowerCased(locale) + '-', 0) == 0) {
      continue;  // a shorter form
    }
    last = locale;
    const std::string name = languageName(locale);
    html.text(separator).text(name).text(name.empty() ? "" : " (");
    html.markup("<bdi class=\"tag\">").text(locale, TAG).markup("</bdi>");
    html.text(name.empty() ? "" : ")");
    separator = ", ";
  }
  if (audience.hasOthers) {
    html.text(audience.locales.empty() ? "" : " and ");
    html.text(isOnly && audience.locales.empty() ? "every language" : "every other language");
  }
}

void describe(View& view, const Config& record, IconFinder& icons) {
  const IconChoice icon = icons.find(record);
  printFace(view.face, record, icon, icons.hasPackage());
  FactList facts = {view.facts};
  facts.addDescription(record.getDescription());
  facts.add("Short name", record.getShortName());
  facts.add("Version", record.getVersion());
  facts.add("Identifier", record.getId());
  facts.add("Store id", record.getTavloApplicationId());
  facts.add("Store version", record.getTavloApplicationVersion());
  if (record.getAuthor()) {
    const Config::Author& author = record.getAuthor().get();
    facts.add("Author", author.name);
    facts.add("Author’s page", author.href);
    facts.add("Author’s e-mail", author.email);
  }
  if (record.getLicense()) {
    facts.addLicense(record.getLicense().get());
  }
  facts.add("Width", record.getWidth(), " px");
  facts.add("Height", record.getHeight(), " px");
  if (!record.getWindowModes().empty()) {
    facts.add("View modes", join(record.getWindowModes()));
  }
  if (record.getStartFile()) {
    facts.addStartFile(record.getStartFile().get());
  }
  facts.addIcons(record.getIcons(), icon);
}

Facts takeShared(std::vector<View>& views) {
  Facts shared;
  const auto first =
      std::find_if(views.begin(), views.end(), [](const View& view) { return !view.problem; });
  for (const auto& fact : first == views.end() ? Facts() : Facts(first->facts)) {
    if (std::all_of(first, views.end(), [&](const View& view) {
          return view.problem ||
                 std::find(view.facts.begin(), view.facts.end(), fact) != view.facts.end();
        })) {
      for (View& view : views) {
        view.facts.erase(std::remove(view.facts.begin(), view.facts.end(), fact), view.facts.end());
      }
      shared.push_back(fact);
    }
  }
  return shared;
}

void printFacts(HtmlWriter& html, const Facts& facts) {
  if (facts.empty()) {
    return;
  }
  html.markup("<dl>\n");
  for (const auto& [term, value] : facts) {
    html.markup("<div><dt>").text(term).markup("</dt><dd>").part(value);
    html.markup("</dd></div>\n");
  }
  html.markup("</dl>\n");
}

}  // namespace orvane::nimbrel::tools
