#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/Config.h"
#include "tools/Failure.h"
#include "tools/html/HtmlWriter.h"
#include "tools/html/IconFinder.h"
#include "util/XmlDocument.h"

namespace orvane::nimbrel::tools {

/// Users who get the same of a document.
struct Audience {
  std::vector<std::string> locales;  ///< that they prefer
  /// Whether those belong to them for whose languages the document has nothing.
  bool hasOthers = false;
};

/// The audiences of a document: one for each language of its elements, in the order of the
/// document, after one for all other languages, whose users get the document's default.
[[nodiscard]] std::vector<Audience> audiencesOf(const util::XmlDocument& document);

/// Prints the languages of an audience: "English (en) and every other language". The only one of a
/// document may have all of them.
void printAudience(HtmlWriter& html, const Audience& audience, bool isOnly = false);

/// What a page says of an application, each under a term that stands once in a list.
using Facts = std::vector<std::pair<std::string_view, HtmlWriter>>;

/// What users can know of an application before they start it.
struct View {
  Audience audience;
  std::optional<DocumentFailure::Problem> problem = {};  ///< that rejects the document
  HtmlWriter face = {};                                  ///< icon and name
  Facts facts = {};  ///< what it is, who made it, under which terms, and why they see this icon
};

/// Fills a view with what a record says.
void describe(View& view, const config::Config& record, IconFinder& icons);

/// Takes the facts that are the same in all views that are not rejected out of them.
[[nodiscard]] Facts takeShared(std::vector<View>& views);

void printFacts(HtmlWriter& html, const Facts& facts);

}  // namespace orvane::nimbrel::tools
