#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tools/html/HtmlWriter.h"
#include "util/XmlDocument.h"

namespace orvane::nimbrel::tools {

/// Users who get the same of a document.
struct Audience {
  std::vector<std::string> locales;  ///< that they prefer
  /// Whether those belong to them for whose languages the document has nothing.
  bool hasOthers = false;
};

/// The most audiences that a page shows.
inline constexpr std::size_t MOST_AUDIENCES = 64;

/// The audiences of a document: one for each language of its elements, in the order of the
/// document, after one for all other languages. `defaultLocale` is what the parser took of the
/// document, or empty: its users get what all others do.
[[nodiscard]] std::vector<Audience> audiencesOf(const util::XmlDocument& document,
                                                const std::string& defaultLocale);

/// Prints the languages of an audience: "English (en) and every other language". The only one of a
/// document may have all of them.
void printAudience(HtmlWriter& html, const Audience& audience, bool isOnly = false);

}  // namespace orvane::nimbrel::tools
