#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::nimbrel::check {

/// What a person takes two texts for: in lower case, without blanks, "-", "_", ".", quotes and
/// invisible characters, and with the Latin letter for one that looks like it. Throws only
/// `std::bad_alloc`, as does all else here.
[[nodiscard]] std::u32string plainForm(std::string_view text);

/// Whether two texts are the same in their plain form, and not empty there.
[[nodiscard]] bool looksLike(std::string_view left, std::string_view right);

/// How much may be wrong in a name that is known again.
enum class Reach {
  CERTAIN,  ///< its looks or a single letter: changed, left out, added, or two exchanged
  LIKELY    ///< a third of its letters
};

/// Looks among known names for the one that an unknown name was meant to be: the only one with the
/// fewest letters to change.
class NearestName {
 public:
  explicit NearestName(std::string_view written, Reach reach = Reach::CERTAIN)
      : written_(plainForm(written)), reach_(reach) {}

  void consider(std::string_view known);

  /// The known name; empty when there is none or several.
  [[nodiscard]] std::string_view get() const noexcept {
    return count_ == 1 ? name_ : std::string_view();
  }

 private:
  std::u32string written_;
  Reach reach_;
  std::string_view name_;
  std::size_t distance_ = 0;  // of `name_`
  std::size_t count_ = 0;     // of names that are as near
};

/// Puts names in order, the most similar to an unknown one first.
void sortByLikeness(std::string_view written, std::vector<std::string>& names);

/// The word that a switch was meant to have: one that looks like `on` or `off`, or the word of the
/// other pair ("true" for "yes", "no" for "false"). Empty when that is not certain.
[[nodiscard]] std::string_view suggestedWord(std::string_view written, std::string_view on,
                                             std::string_view off);

}  // namespace orvane::nimbrel::check
