#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "util/LocalizableString.h"

namespace orvane::nimbrel::tools {

/// Prints HTML, which is well-formed XML as well, to standard output, piece by piece.
///
/// Markup comes from literals of the program only; all else goes through `text`, the one function
/// that escapes, or is a number, base64, or an attribute that was checked. Throws `OutputFailure`.
class HtmlWriter {
 public:
  HtmlWriter() = default;
  HtmlWriter(const HtmlWriter&) = delete;
  HtmlWriter& operator=(const HtmlWriter&) = delete;

  /// Markup as it is.
  template <std::size_t N>
  HtmlWriter& markup(const char (&literal)[N]) {
    return append(std::string_view(literal, N - 1));
  }

  /// A text that anybody may have written, for content and attributes in double quotes.
  ///
  /// Markup characters and quotes become references. Control characters, marks of direction and
  /// noncharacters are named instead ("U+202E"), bytes that are no UTF-8 too. Line breaks and tabs
  /// stay.
  HtmlWriter& text(std::string_view text);
  /// The same of no more than `limit` characters, and of how many are left out.
  HtmlWriter& text(std::string_view text, std::size_t limit);

  HtmlWriter& number(std::size_t number);
  /// "1 error", "2 errors".
  HtmlWriter& count(std::size_t number, const char* noun);
  HtmlWriter& base64(std::string_view bytes);

  /// The attributes "lang" and "dir". A tag that is none in form says that the language is not
  /// known.
  HtmlWriter& language(std::string_view tag, util::LocalizableString::Direction direction);

  /// A text with the languages and directions of its runs, none of which reaches beyond it.
  HtmlWriter& localized(const util::LocalizableString& text, std::size_t limit);

  /// Prints what is left.
  void flush();

 private:
  HtmlWriter& append(std::string_view piece);
  HtmlWriter& more(std::string_view rest);
  void name(const char* kind, char32_t character, int digits);

  std::string pending_;
};

}  // namespace orvane::nimbrel::tools
