#pragma once

#include <cstddef>

#include "tools/html/HtmlWriter.h"

namespace orvane::nimbrel::tools {

/// Prints a list: `print(entry)` writes the content of an entry. The first ones are seen at once,
/// the others when asked for; of a very long list no more than 1,000 are printed, and the number of
/// the others.
template <typename Entries, typename Print>
void printEntries(HtmlWriter& html, const Entries& entries, const Print& print) {
  constexpr std::size_t SEEN = 12;
  constexpr std::size_t MOST = 1000;
  // A button that brings a single entry takes as much room as the entry.
  const bool isFolded = entries.size() > SEEN + 1;
  std::size_t number = 0;
  html.markup("<ul>\n");
  for (const auto& entry : entries) {
    if (number == MOST) {
      break;
    }
    if (isFolded && number == SEEN) {
      html.markup("</ul>\n<details><summary>Show ")
          .number(entries.size() - SEEN)
          .markup(" more</summary>\n<ul>\n");
    }
    html.markup("<li>");
    print(entry);
    html.markup("</li>\n");
    ++number;
  }
  html.markup("</ul>\n");
  if (number < entries.size()) {
    html.markup("<p class=\"cut\">Not on this page: ")
        .number(entries.size() - number)
        .markup(" more.</p>\n");
  }
  if (isFolded) {
    html.markup("</details>\n");
  }
}

}  // namespace orvane::nimbrel::tools
