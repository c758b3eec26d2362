#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "check/SourceText.h"

namespace orvane::nimbrel::check {

/// A place in the text of a document, and what stands in it and behind it. Throws only
/// `std::bad_alloc`.
class XmlCursor {
 protected:
  static constexpr std::size_t NOWHERE = std::string_view::npos;
  static constexpr std::string_view DIGITS = "0123456789";
  static constexpr std::string_view SPACE = " \t\r\n";

  explicit XmlCursor(std::string_view text) noexcept : text_(text) {}

  /// Whether this comes next, or stands at another place.
  [[nodiscard]] bool has(std::string_view part) const noexcept { return has(part, at_); }
  [[nodiscard]] bool has(std::string_view part, std::size_t at) const noexcept;
  [[nodiscard]] std::size_t skipSpace(std::size_t at) const noexcept;
  /// The place behind a character.
  [[nodiscard]] std::size_t behindCharacter(std::size_t at) const noexcept;
  /// The end of a name; `begin` where none begins.
  [[nodiscard]] std::size_t endOfName(std::size_t begin) const noexcept;
  /// The result of a search; the end of the text for none.
  [[nodiscard]] std::size_t orEnd(std::size_t at) const noexcept;
  /// The text up to there, so that a search takes time for that alone.
  [[nodiscard]] std::string_view upTo(std::size_t end) const noexcept {
    return text_.substr(0, end);
  }
  [[nodiscard]] std::string in(Span span) const;

  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace orvane::nimbrel::check
