#pragma once

#include <cstddef>
#include <string_view>

namespace orvane::nimbrel::check {

/// Whether two texts are equal but for the case of ASCII letters.
[[nodiscard]] bool isSameInAnyCase(std::string_view left, std::string_view right) noexcept;

/// Looks among known names for the one that an unknown name was meant to be: the only one that
/// differs in case alone, else the only one that differs in a single letter (changed, left out,
/// added, or two exchanged).
class NearestName {
 public:
  explicit NearestName(std::string_view written) noexcept : written_(written) {}

  void consider(std::string_view known) noexcept;

  /// The known name; empty when there is none or several.
  [[nodiscard]] std::string_view get() const noexcept;

 private:
  struct Candidate {
    std::string_view name;
    std::size_t count = 0;

    void add(std::string_view known) noexcept;
  };

  std::string_view written_;
  Candidate byCase_;
  Candidate byLetter_;
};

/// The word that a switch was meant to have: one of `on` and `off` in another case, or the word of
/// the other pair ("true" for "yes", "no" for "false"). Empty when that is not certain.
[[nodiscard]] std::string_view suggestedWord(std::string_view written, std::string_view on,
                                             std::string_view off) noexcept;

}  // namespace orvane::nimbrel::check
