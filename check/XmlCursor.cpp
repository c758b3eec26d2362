#include "check/XmlCursor.h"

#include <algorithm>

#include "util/Utf8.h"

namespace orvane::nimbrel::check {
namespace {

/// ASCII that is not of names, and how UTF-8 of blanks and punctuation of other alphabets begins.
constexpr std::string_view NOT_OF_NAMES = " \t\r\n!\"#$%&'()*+,/;<=>?@[\\]^`{|}~";
constexpr std::string_view OTHERS_NOT_OF_NAMES[] = {"\xC2", "\xE2\x80", "\xE2\x81"};
constexpr std::string_view NOT_FIRST = "-.0123456789";

}  // namespace

bool XmlCursor::has(std::string_view part, std::size_t at) const noexcept {
  return at <= text_.size() && text_.compare(at, part.size(), part) == 0;
}

std::size_t XmlCursor::skipSpace(std::size_t at) const noexcept {
  return orEnd(text_.find_first_not_of(SPACE, at));
}

std::size_t XmlCursor::behindCharacter(std::size_t at) const noexcept {
  util::internal::decodeUtf8(text_, at);
  return at;
}

std::size_t XmlCursor::endOfName(std::size_t begin) const noexcept {
  if (begin < text_.size() && NOT_FIRST.find(text_[begin]) != NOWHERE) {
    return begin;
  }
  std::size_t end = orEnd(text_.find_first_of(NOT_OF_NAMES, begin));
  for (const std::string_view other : OTHERS_NOT_OF_NAMES) {
    end = std::min(end, upTo(end).find(other, begin));
  }
  return end;
}

std::size_t XmlCursor::orEnd(std::size_t at) const noexcept {
  return std::min(at, text_.size());
}

std::string XmlCursor::in(Span span) const {
  return std::string(text_.substr(span.begin, span.end - span.begin));
}

}  // namespace orvane::nimbrel::check
