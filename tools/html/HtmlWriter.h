#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "util/LocalizableString.h"

namespace orvane::nimbrel::tools {

/// Makes HTML, which is well-formed XML as well.
///
/// Markup comes from literals of the program only; all else goes through `text`, the one function
/// that escapes, or is a number, base64, or an attribute that was checked.
class HtmlWriter {
 public:
  /// What another one holds.
  HtmlWriter& part(const HtmlWriter& part) { return append(part.html_); }
  [[nodiscard]] bool isEmpty() const noexcept { return html_.empty(); }
  [[nodiscard]] bool operator==(const HtmlWriter& other) const { return html_ == other.html_; }

  /// Markup as it is.
  template <std::size_t N>
  HtmlWriter& markup(const char (&literal)[N]) {
    return append(std::string_view(literal, N - 1));
  }

  /// A text that anybody may have written, for content and attributes in double quotes.
  ///
  /// Markup characters and quotes become references. Control characters, marks of direction,
  /// noncharacters and characters that nobody sees are named instead ("U+202E"), bytes that are no
  /// UTF-8 too. Line breaks, tabs, and joiners where they change what is seen, stay.
  HtmlWriter& text(std::string_view text);

  /// The same for content alone, of no more than `limit` characters, and of how many are left out.
  /// An address is broken at "/" where it is longer than a line.
  HtmlWriter& text(std::string_view text, std::size_t limit);
  /// The same in an element of its own, beyond which its direction does not reach.
  HtmlWriter& value(std::string_view text, std::size_t limit);

  HtmlWriter& number(std::size_t number) { return append(std::to_string(number)); }
  /// "1 error", "2 errors".
  HtmlWriter& count(std::size_t number, std::string_view noun);
  HtmlWriter& base64(std::string_view bytes);

  /// The attributes "lang" and "dir". A tag that is none in form says that the language is not
  /// known.
  HtmlWriter& language(std::string_view tag, util::LocalizableString::Direction direction);

  /// A text with the languages and directions of its runs, none of which reaches beyond it.
  HtmlWriter& localized(const util::LocalizableString& text, std::size_t limit);

  /// Prints all on standard output and holds nothing then. Throws `OutputFailure`.
  void flush();

 private:
  HtmlWriter& append(std::string_view piece) {
    html_ += piece;
    return *this;
  }
  HtmlWriter& more(std::string_view rest);
  void name(const char* kind, char32_t character, int digits);

  std::string html_;
};

}  // namespace orvane::nimbrel::tools
