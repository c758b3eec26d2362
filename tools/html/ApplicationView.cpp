#include "tools/html/ApplicationView.h"

#include <algorithm>
#include <string>
#include <utility>

#include "util/LocalizableString.h"
#include "util/Option.h"

namespace orvane::nimbrel::tools {
namespace {

using config::Config;
using util::LocalizableString;
using util::Option;

// In characters.
constexpr std::size_t LINE = 300;
constexpr std::size_t PARAGRAPH = 800;
constexpr std::size_t LICENSE = 4000;

HtmlWriter& begin(Facts& facts, std::string_view term) {
  facts.push_back({term});
  return facts.back().value;
}

void add(Facts& facts, std::string_view term, const Option<std::string>& value) {
  if (value) {
    begin(facts, term).markup("<bdi>").address(value.get(), LINE).markup("</bdi>");
  }
}
void add(Facts& facts, std::string_view term, const LocalizableString& value) {
  if (!value.empty()) {
    begin(facts, term).localized(value, LINE);
  }
}
void add(Facts& facts, std::string_view term, const Option<LocalizableString>& value) {
  if (value) {
    add(facts, term, value.get());
  }
}

void add(Facts& facts, std::string_view term, const Option<unsigned int>& value, const char* unit) {
  if (value) {
    begin(facts, term).number(value.get()).text(unit);
  }
}

/// A paragraph of a class, in the language and direction of its text.
template <std::size_t N>
void paragraph(HtmlWriter& html, const char (&name)[N], const LocalizableString& text,
               std::size_t limit) {
  html.markup("<p class=\"").markup(name).markup("\"");
  html.language(text.getLanguageTag(), text.getDirection()).markup(">");
  html.localized(text, limit).markup("</p>");
}

void addDescription(Facts& facts, const Option<LocalizableString>& text) {
  HtmlWriter& html = begin(facts, "Description");
  if (text && !text.get().empty()) {
    paragraph(html, "prose", text.get(), PARAGRAPH);
  } else {
    html.markup("<span class=\"none\">none</span>");
  }
}

void addLicense(Facts& facts, const Config::License& license) {
  add(facts, "License at", license.href);
  if (!license.text.empty()) {
    HtmlWriter& html = begin(facts, "License");
    html.markup("<details><summary>Text</summary>\n");
    paragraph(html, "prose", license.text, LICENSE);
    html.markup("</details>");
  }
}

void addModes(Facts& facts, const std::vector<std::string>& modes) {
  std::string names;
  for (const std::string& mode : modes) {
    names += (names.empty() ? "" : ", ") + mode;
  }
  if (!names.empty()) {
    begin(facts, "View modes").markup("<bdi>").text(names, LINE).markup("</bdi>");
  }
}

void addStartFile(Facts& facts, const Config::StartFile& file) {
  HtmlWriter& html = begin(facts, "Starts with");
  html.markup("<bdi>").address(file.src, LINE).markup("</bdi>");
  for (const std::string& detail : {file.type, file.encoding}) {
    if (!detail.empty()) {
      html.markup(", <bdi>").text(detail, LINE).markup("</bdi>");
    }
  }
}

void addIcons(Facts& facts, const std::vector<Config::Icon>& icons, const IconChoice& choice) {
  constexpr std::size_t MOST = 8;
  if (icons.empty() && choice.image == nullptr) {
    return;
  }
  HtmlWriter& html = begin(facts, "Icons");
  for (std::size_t i = 0; i < std::min(icons.size(), MOST); ++i) {
    html.text(i == 0 ? "" : "\n").markup("<bdi>").address(icons[i].src, LINE).markup("</bdi>");
    if (icons[i].width && icons[i].height) {
      html.text(", ").number(icons[i].width.get()).text(" × ").number(icons[i].height.get());
    }
    if (i < choice.problems.size()) {
      html.markup("\n<span class=\"why\">not shown: ").text(choice.problems[i]).markup("</span>");
    }
  }
  if (icons.size() > MOST) {
    html.markup("\n<span class=\"cut\">and ").count(icons.size() - MOST, "more icon");
    html.markup("</span>");
  }
  if (choice.image != nullptr) {
    html.text(icons.empty() ? "" : "\n").markup("<span class=\"why\">shown: <bdi>");
    html.address(choice.path, LINE).markup("</bdi>, ");
    html.text(choice.isDefault ? "a file that is the icon by default" : "the first that can be");
    html.markup("</span>");
  }
}

}  // namespace

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

Facts factsOf(const Config& record, const IconChoice& icon) {
  Facts facts;
  addDescription(facts, record.getDescription());
  add(facts, "Short name", record.getShortName());
  add(facts, "Version", record.getVersion());
  add(facts, "Identifier", record.getId());
  add(facts, "Store id", record.getTavloApplicationId());
  add(facts, "Store version", record.getTavloApplicationVersion(), "");
  if (record.getAuthor()) {
    const Config::Author& author = record.getAuthor().get();
    add(facts, "Author", author.name);
    add(facts, "Author’s page", author.href);
    add(facts, "Author’s e-mail", author.email);
  }
  if (record.getLicense()) {
    addLicense(facts, record.getLicense().get());
  }
  add(facts, "Width", record.getWidth(), " px");
  add(facts, "Height", record.getHeight(), " px");
  addModes(facts, record.getWindowModes());
  if (record.getStartFile()) {
    addStartFile(facts, record.getStartFile().get());
  }
  addIcons(facts, record.getIcons(), icon);
  return facts;
}

Facts takeShared(const std::vector<Facts*>& lists) {
  Facts shared;
  if (lists.empty()) {
    return shared;
  }
  for (const Fact& fact : Facts(*lists.front())) {
    const auto find = [&](Facts& facts) { return std::find(facts.begin(), facts.end(), fact); };
    if (std::all_of(lists.begin(), lists.end(),
                    [&](Facts* facts) { return find(*facts) != facts->end(); })) {
      for (Facts* const facts : lists) {
        facts->erase(find(*facts));
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
  for (const Fact& fact : facts) {
    html.markup("<div><dt>").text(fact.term).markup("</dt><dd>").part(fact.value);
    html.markup("</dd></div>\n");
  }
  html.markup("</dl>\n");
}

}  // namespace orvane::nimbrel::tools
