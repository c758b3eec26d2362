#include "tools/html/ApplicationView.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

/// A list of terms that is begun with its first one.
class Facts {
 public:
  explicit Facts(HtmlWriter& html) : html_(html) {}
  Facts(const Facts&) = delete;
  Facts& operator=(const Facts&) = delete;
  ~Facts() = default;

  HtmlWriter& begin(const char* term) {
    if (!std::exchange(isBegun_, true)) {
      html_.markup("<dl>\n");
    }
    return html_.markup("<div><dt>").text(term).markup("</dt><dd>");
  }
  void end() { html_.markup("</dd></div>\n"); }

  void add(const char* term, std::string_view value) {
    begin(term).markup("<bdi>").text(value, LINE).markup("</bdi>");
    end();
  }
  void add(const char* term, const Option<std::string>& value) {
    if (value) {
      add(term, value.get());
    }
  }
  void add(const char* term, const Option<LocalizableString>& value) {
    if (value && !value.get().empty()) {
      begin(term).localized(value.get(), LINE);
      end();
    }
  }

  void finish() {
    if (isBegun_) {
      html_.markup("</dl>\n");
    }
  }

 private:
  HtmlWriter& html_;
  bool isBegun_ = false;
};

/// A paragraph of a class, in the language and direction of its text.
template <std::size_t N>
void paragraph(HtmlWriter& html, const char (&name)[N], const LocalizableString& text,
               std::size_t limit) {
  html.markup("<p class=\"").markup(name).markup("\"");
  html.language(text.getLanguageTag(), text.getDirection()).markup(">");
  html.localized(text, limit).markup("</p>\n");
}

void printIcon(HtmlWriter& html, const Config& record, IconFinder& icons) {
  if (const IconImage* const icon = icons.find(record); icon != nullptr) {
    // The name beside it says all that there is to say.
    html.markup("<img class=\"icon\" alt=\"\" src=\"data:").text(icon->type).markup(";base64,");
    html.base64(icon->bytes).markup("\"/>\n");
  } else if (icons.hasPackage()) {
    html.markup("<p class=\"icon none\" lang=\"en\" dir=\"ltr\">");
    html.text(record.getIcons().empty() ? "No icon" : "Icon not shown").markup("</p>\n");
  }
}

void printFace(HtmlWriter& html, const Config& record, IconFinder& icons) {
  html.markup("<div class=\"face\"");
  if (record.getName()) {  // its direction decides on which side the icon stands
    html.language(record.getName().get().getLanguageTag(), record.getName().get().getDirection());
  }
  html.markup(">\n");
  printIcon(html, record, icons);
  html.markup("<div>\n");
  if (record.getName() && !record.getName().get().empty()) {
    paragraph(html, "name", record.getName().get(), LINE);
  } else {
    html.markup("<p class=\"name none\" lang=\"en\" dir=\"ltr\">No name</p>\n");
  }
  if (record.getAuthor() && !record.getAuthor().get().name.empty()) {
    paragraph(html, "author", record.getAuthor().get().name, LINE);
  }
  html.markup("</div>\n</div>\n");
}

void addIcons(Facts& facts, const std::vector<Config::Icon>& icons) {
  constexpr std::size_t MOST = 8;
  if (icons.empty()) {
    return;
  }
  HtmlWriter& html = facts.begin("Icons");
  for (std::size_t i = 0; i < std::min(icons.size(), MOST); ++i) {
    html.text(i == 0 ? "" : "\n").markup("<bdi>").text(icons[i].src, LINE).markup("</bdi>");
    if (icons[i].width && icons[i].height) {
      html.text(", ").number(icons[i].width.get()).text(" × ").number(icons[i].height.get());
    }
  }
  if (icons.size() > MOST) {
    html.markup("\n<span class=\"cut\">and ").count(icons.size() - MOST, "more icon");
    html.markup("</span>");
  }
  facts.end();
}

void printDetails(HtmlWriter& html, const Config& record) {
  Facts facts(html);
  facts.add("Short name", record.getShortName());
  if (record.getAuthor()) {
    facts.add("Author’s page", record.getAuthor().get().href);
    facts.add("Author’s e-mail", record.getAuthor().get().email);
  }
  if (record.getLicense()) {
    facts.add("License at", record.getLicense().get().href);
  }
  if (record.getStartFile()) {
    facts.add("Starts with", record.getStartFile().get().src);
  }
  addIcons(facts, record.getIcons());
  facts.finish();
  if (record.getLicense() && !record.getLicense().get().text.empty()) {
    html.markup("<details>\n<summary>License</summary>\n");
    paragraph(html, "prose", record.getLicense().get().text, LICENSE);
    html.markup("</details>\n");
  }
}

}  // namespace

void printApplication(HtmlWriter& html, const Config& record, IconFinder& icons) {
  printFace(html, record, icons);
  if (record.getDescription() && !record.getDescription().get().empty()) {
    paragraph(html, "prose", record.getDescription().get(), PARAGRAPH);
  } else {
    html.markup("<p class=\"none\">No description</p>\n");
  }
  printDetails(html, record);
}

void printFacts(HtmlWriter& html, const Config& record) {
  Facts facts(html);
  facts.add("Version", record.getVersion());
  facts.add("Identifier", record.getId());
  facts.add("Store id", record.getTavloApplicationId());
  if (record.getTavloApplicationVersion()) {
    facts.begin("Store version").number(record.getTavloApplicationVersion().get());
    facts.end();
  }
  const auto size = [&](const char* term, const Option<unsigned int>& pixels) {
    if (pixels) {
      facts.begin(term).count(pixels.get(), "pixel");
      facts.end();
    }
  };
  size("Width", record.getWidth());
  size("Height", record.getHeight());
  std::string modes;
  for (const std::string& mode : record.getWindowModes()) {
    modes += (modes.empty() ? "" : ", ") + mode;
  }
  if (!modes.empty()) {
    facts.add("View modes", modes);
  }
  facts.finish();
}

}  // namespace orvane::nimbrel::tools
