#pragma once

#include <string_view>
#include <vector>

#include "config/Config.h"
#include "tools/html/HtmlWriter.h"
#include "tools/html/IconFinder.h"

namespace orvane::nimbrel::tools {

/// One thing that a page says of an application.
struct Fact {
  std::string_view term;  ///< a constant, once in a list
  HtmlWriter value{HtmlWriter::Target::PART};

  [[nodiscard]] bool operator==(const Fact& other) const {
    return term == other.term && value == other.value;
  }
};
using Facts = std::vector<Fact>;

/// Prints icon and name, as users see them before they start an application.
void printFace(HtmlWriter& html, const config::Config& record, const IconChoice& icon,
               bool hasPackage);

/// All else that users can know before the start: what it is, who made it, under which terms, and
/// why they see this icon.
[[nodiscard]] Facts factsOf(const config::Config& record, const IconChoice& icon);

/// Takes the facts that are the same in all lists out of them.
[[nodiscard]] Facts takeShared(const std::vector<Facts*>& lists);

void printFacts(HtmlWriter& html, const Facts& facts);

}  // namespace orvane::nimbrel::tools
