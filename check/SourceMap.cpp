#include "check/SourceMap.h"

#include <algorithm>

namespace orvane::nimbrel::check {
namespace {

constexpr std::string_view SPACE = " \t\r\n";
constexpr std::string_view AFTER_NAME = " \t\r\n/>=<";

bool hasAt(std::string_view text, std::size_t at, std::string_view part) noexcept {
  return text.compare(at, part.size(), part) == 0;
}

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

/// The offset behind a comment, a CDATA section or an instruction; `at` where there is none.
std::size_t behindMisc(std::string_view text, std::size_t at) noexcept {
  constexpr struct {
    std::string_view start;
    std::string_view end;
  } FORMS[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
  for (const auto& form : FORMS) {
    if (hasAt(text, at, form.start)) {
      return behind(text, at + form.start.size(), form.end);
    }
  }
  return at;
}

std::size_t orEnd(std::size_t at, std::string_view text) noexcept {
  return std::min(at, text.size());
}

/// Calls `onStart(begin, end)` for each start tag and `onEnd(begin)` for each end tag.
template <typename OnStart, typename OnEnd>
void forEachTag(std::string_view text, OnStart onStart, OnEnd onEnd) {
  std::size_t at = text.find('<');
  while (at < text.size()) {
    const std::size_t next = behindMisc(text, at);
    if (next != at) {
      at = next;
    } else if (hasAt(text, at, "<!")) {
      at = behindDoctype(text, at + 2);
    } else if (hasAt(text, at, "</")) {
      onEnd(at);
      at += 2;
    } else {
      const std::size_t end = behindTag(text, at);
      onStart(at, end);
      at = end;
    }
    at = text.find('<', at);
  }
}

bool isDeclaration(std::string_view name) noexcept {
  return name == "xmlns" || name.substr(0, 6) == "xmlns:";
}

}  // namespace

std::size_t behindDoctype(std::string_view text, std::size_t at) noexcept {
  bool inSubset = false;
  while (at < text.size()) {
    const char c = text[at];
    if (inSubset && c == '<') {
      const std::size_t next = behindMisc(text, at);
      at = next == at ? behindTag(text, at) : next;
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

std::vector<std::uint32_t> startTagsOf(std::string_view text) {
  std::vector<std::uint32_t> tags;
  forEachTag(
      text,
      [&](std::size_t begin, std::size_t /*end*/) {
        tags.push_back(static_cast<std::uint32_t>(begin));
      },
      [](std::size_t /*begin*/) {});
  return tags;
}

std::vector<std::uint32_t> endTagsOf(std::string_view text) {
  std::vector<std::uint32_t> tags;
  std::vector<std::size_t> open;  // elements
  forEachTag(
      text,
      [&](std::size_t begin, std::size_t end) {
        if (end < begin + 2 || text[end - 2] != '/') {
          open.push_back(tags.size());
        }
        tags.push_back(0);
      },
      [&](std::size_t begin) {
        if (!open.empty()) {
          tags[open.back()] = static_cast<std::uint32_t>(begin);
          open.pop_back();
        }
      });
  return tags;
}

Span textIn(std::string_view text, std::size_t offset) noexcept {
  std::size_t depth = 0;
  for (std::size_t at = offset; at < text.size();) {
    const std::size_t markup = orEnd(text.find('<', at), text);
    const std::size_t begin = orEnd(text.find_first_not_of(SPACE, at), text);
    if (depth == 1 && begin < markup) {
      return {begin, text.find_last_not_of(SPACE, markup - 1) + 1};
    }
    const std::size_t end = behindMisc(text, markup);
    if (end != markup) {
      if (depth == 1 && hasAt(text, markup, "<![CDATA[")) {
        return {markup, end};
      }
      at = end;
      continue;
    }
    at = behindTag(text, markup);
    if (hasAt(text, markup, "</")) {
      --depth;
    } else if (text[at - 2] != '/') {
      ++depth;
    }
    if (depth == 0) {
      break;
    }
  }
  return {text.size(), text.size()};
}

Tag readTag(std::string_view text, std::size_t offset) {
  Tag tag;
  std::size_t at = orEnd(text.find_first_of(AFTER_NAME, offset + 1), text);
  tag.name = {offset + 1, at};
  const auto skip = [&](std::string_view characters, std::size_t from) {
    return orEnd(text.find_first_not_of(characters, from), text);
  };
  while (true) {
    const std::size_t name = skip(SPACE, at);
    const std::size_t nameEnd = orEnd(text.find_first_of(AFTER_NAME, name), text);
    const std::size_t equals = skip(SPACE, nameEnd);
    if (nameEnd == name || equals == text.size() || text[equals] != '=') {
      return tag;  // the end of the tag
    }
    const std::size_t quote = skip(SPACE, equals + 1);
    if (quote == text.size()) {
      return tag;
    }
    const std::size_t end = orEnd(text.find(text[quote], quote + 1), text);
    (isDeclaration(text.substr(name, nameEnd - name)) ? tag.declarations : tag.attributes)
        .push_back({{name, nameEnd}, {quote + 1, end}});
    at = orEnd(end + 1, text);
  }
}

}  // namespace orvane::nimbrel::check
