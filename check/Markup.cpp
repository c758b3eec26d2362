#include "check/Markup.h"

#include <algorithm>

namespace orvane::nimbrel::check {
namespace {

/// The offset behind the next `end`; the size of the text when there is none.
std::size_t behind(std::string_view text, std::size_t at, std::string_view end) noexcept {
  const std::size_t found = text.find(end, at);
  return found == std::string_view::npos ? text.size() : found + end.size();
}

/// The offset behind the next ">" that stands in no literal.
std::size_t behindTag(std::string_view text, std::size_t at) noexcept {
  while (at < text.size()) {
    const char c = text[at++];
    if (c == '>') {
      return at;
    }
    if (c == '"' || c == '\'') {
      at = behind(text, at, {&c, 1});
    }
  }
  return at;
}

/// A comment, a CDATA section or an instruction.
std::optional<Token> miscAt(std::string_view text, std::size_t at) noexcept {
  constexpr struct {
    Token::Kind kind;
    std::string_view start;
    std::string_view end;
  } FORMS[] = {{Token::COMMENT, "<!--", "-->"},
               {Token::CDATA, "<![CDATA[", "]]>"},
               {Token::INSTRUCTION, "<?", "?>"}};
  for (const auto& form : FORMS) {
    if (hasAt(text, at, form.start)) {
      const std::size_t end = text.find(form.end, at + form.start.size());
      return end == std::string_view::npos ? Token{form.kind, {at, text.size()}, false}
                                           : Token{form.kind, {at, end + form.end.size()}, true};
    }
  }
  return std::nullopt;
}

/// The offset behind a document type, of which what follows "<!" begins at `at`.
std::size_t behindDoctype(std::string_view text, std::size_t at) noexcept {
  bool inSubset = false;
  while (at < text.size()) {
    const char c = text[at];
    if (inSubset && c == '<') {
      const std::optional<Token> misc = miscAt(text, at);
      at = misc ? misc->span.end : behindTag(text, at);
      continue;
    }
    ++at;
    if (c == '[' || c == ']') {
      inSubset = c == '[';
    } else if (!inSubset && c == '>') {
      return at;
    } else if (!inSubset && (c == '"' || c == '\'')) {
      at = behind(text, at, {&c, 1});
    }
  }
  return at;
}

}  // namespace

bool isXmlCharacter(char32_t c) noexcept {
  return c == '\t' || c == '\n' || c == '\r' ||
         (c >= 0x20 && (c & 0x1FF800U) != 0xD800 && c != 0xFFFE && c != 0xFFFF && c <= 0x10FFFF);
}

bool hasAt(std::string_view text, std::size_t at, std::string_view part) noexcept {
  return at <= text.size() && text.compare(at, part.size(), part) == 0;
}

std::size_t skipSpace(std::string_view text, std::size_t at) noexcept {
  return std::min(text.find_first_not_of(XML_SPACE, at), text.size());
}

Span nameAt(std::string_view text, std::size_t begin) noexcept {
  constexpr std::string_view NOT_FIRST = "-.0123456789";
  constexpr std::string_view NOT_OF_NAMES = " \t\r\n!\"#$%&'()*+,/;<=>?@[\\]^`{|}~";
  return {begin, begin < text.size() && NOT_FIRST.find(text[begin]) != std::string_view::npos
                     ? begin
                     : std::min(text.find_first_of(NOT_OF_NAMES, begin), text.size())};
}

std::optional<Span> valueBehind(std::string_view text, std::size_t nameEnd) noexcept {
  const std::size_t equals = skipSpace(text, nameEnd);
  const std::size_t quote = skipSpace(text, equals + 1);
  if (quote == text.size() || text[equals] != '=' || (text[quote] != '"' && text[quote] != '\'')) {
    return std::nullopt;
  }
  return Span{quote + 1, std::min(text.find(text[quote], quote + 1), text.size())};
}

Token tokenAt(std::string_view text, std::size_t at) noexcept {
  if (const std::optional<Token> misc = miscAt(text, at)) {
    return *misc;
  }
  if (text[at] != '<') {
    return {Token::TEXT, {at, std::min(text.find('<', at), text.size())}, true};
  }
  const bool isDoctype = hasAt(text, at, "<!");
  const std::size_t end = isDoctype ? behindDoctype(text, at + 2) : behindTag(text, at);
  const Token::Kind kind = isDoctype                               ? Token::DOCTYPE
                           : hasAt(text, at, "</")                 ? Token::END_TAG
                           : end >= at + 2 && text[end - 2] == '/' ? Token::EMPTY_TAG
                                                                   : Token::START_TAG;
  return {kind, {at, end}, text[end - 1] == '>'};
}

std::vector<ElementTags> elementsOf(std::string_view text) {
  std::vector<ElementTags> elements;
  std::vector<std::size_t> open;
  for (std::size_t at = 0; at < text.size();) {
    const auto [kind, span, hasEnd] = tokenAt(text, at);
    if (kind == Token::START_TAG) {
      open.push_back(elements.size());
    }
    if (kind == Token::START_TAG || kind == Token::EMPTY_TAG) {
      elements.push_back({static_cast<std::uint32_t>(at), 0});
    } else if (kind == Token::END_TAG && !open.empty()) {
      elements[open.back()].end = static_cast<std::uint32_t>(at);
      open.pop_back();
    }
    at = span.end;
  }
  return elements;
}

Span textIn(std::string_view text, std::size_t offset) noexcept {
  std::size_t depth = 0;
  for (std::size_t at = offset; at < text.size();) {
    const auto [kind, span, hasEnd] = tokenAt(text, at);
    const std::size_t begin = skipSpace(text, at);
    if (depth == 1 && kind == Token::CDATA) {
      return span;
    }
    if (depth == 1 && kind == Token::TEXT && begin < span.end) {
      return {begin, text.find_last_not_of(XML_SPACE, span.end - 1) + 1};
    }
    if (kind == Token::END_TAG) {
      --depth;
    } else if (kind == Token::START_TAG) {
      ++depth;
    }
    at = depth == 0 ? text.size() : span.end;
  }
  return {text.size(), text.size()};
}

Tag readTag(std::string_view text, std::size_t offset) {
  Tag tag = {nameAt(text, offset + 1)};
  for (std::size_t at = tag.name.end;;) {
    const Span name = nameAt(text, skipSpace(text, at));
    const std::optional<Span> value = valueBehind(text, name.end);
    if (name.isEmpty() || !value) {
      return tag;
    }
    const bool isDeclaration = hasAt(text, name.begin, "xmlns") &&
                               (name.end == name.begin + 5 || text[name.begin + 5] == ':');
    (isDeclaration ? tag.declarations : tag.attributes).push_back({name, *value});
    at = value->end + 1;
  }
}

}  // namespace orvane::nimbrel::check
