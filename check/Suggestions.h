#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "check/Diagnostic.h"
#include "config/ElementDescription.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::check {

/// What a person takes two texts for: in lower case, without blanks, "-", "_", ".", quotes and
/// invisible characters, and with the Latin letter for one that looks like it. Throws only
/// `std::bad_alloc`, as does all else here.
[[nodiscard]] std::u32string plainForm(std::string_view text);

/// A text as it is typed without the help of a word processor: without invisible characters and
/// typographic quotes, with "-" for other dashes and single blanks.
[[nodiscard]] std::string asTyped(std::string_view text);

/// Whether two texts are the same in their plain form, and not empty there.
[[nodiscard]] bool looksLike(std::string_view left, std::string_view right);

/// How much may be wrong in a name that is known again.
enum class Reach {
  CERTAIN,  ///< its looks or a single letter: changed, left out, added, or two exchanged
  LIKELY    ///< a third of its letters
};

/// What was meant in place of something that is wrong.
struct Suggestion {
  std::string text = {};   ///< empty when that is not known
  bool isCertain = false;  ///< whether it may be written without asking
};

/// The known name that another one was meant to be: the only one with the fewest letters to change.
/// It is certain as `Reach` says. Prefixes of known names do not count.
[[nodiscard]] Suggestion nearestName(std::string_view written,
                                     const std::vector<std::string>& known,
                                     Reach reach = Reach::LIKELY);

/// Puts names in order, the most similar to an unknown one first.
void sortByLikeness(std::string_view written, std::vector<std::string>& names);

/// What the author meant where a name, a word or a value is wrong.
[[nodiscard]] Suggestion suggestionFor(const Diagnostic& finding);

/// The element that may stand in its place, spelt as in findings, that an unknown one was meant to
/// be; empty also when the prefix is the mistake.
[[nodiscard]] Suggestion suggestedElement(const util::XmlNode& element);

/// The same for an attribute of an element that may have these.
[[nodiscard]] Suggestion suggestedAttribute(
    const util::XmlNode& element, std::size_t index,
    config::DescriptionList<config::AttributeDescription> known);

}  // namespace orvane::nimbrel::check
