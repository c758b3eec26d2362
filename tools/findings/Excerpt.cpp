#include "tools/findings/Excerpt.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "tools/output/Escape.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::size_t MARGIN = 30;  // kept before the place in a line that is cut
constexpr std::size_t REACH = 800;  // bytes on each side that may be shown
constexpr std::size_t TAB = 8;
constexpr char CUT[] = "...";

bool isInCharacter(std::string_view text, std::size_t at) noexcept {
  return at < text.size() && (text[at] & '\xC0') == '\x80';
}

/// A line as a terminal shows it.
ExcerptParts draw(std::string_view line, check::Span place) {
  std::size_t at = place.begin - std::min(place.begin, REACH);
  while (isInCharacter(line, at)) {
    ++at;
  }
  line = line.substr(0, at + 2 * REACH);
  ExcerptParts parts;
  std::size_t column = 0;
  while (at < line.size()) {
    std::string& part = at < place.begin ? parts.before
                        : at < place.end ? parts.place
                                         : parts.behind;
    std::size_t next = at + 1;
    while (isInCharacter(line, next)) {
      ++next;
    }
    const std::string_view character = line.substr(at, next - at);
    if (character.front() > '\x1F' && character.front() < '\x7F') {  // as nearly all are
      part += character;
      ++column;
    } else {
      const std::string shown =
          character == "\t" ? std::string(TAB - column % TAB, ' ') : escapeUnprintable(character);
      part += shown;
      column += width(shown);
    }
    at = next;
  }
  return parts;
}

/// Cuts a line that is longer than this around the place.
void cut(ExcerptParts& parts, std::size_t limit) {
  const std::size_t begin = width(parts.before);
  const std::size_t whole = begin + width(parts.place) + width(parts.behind);
  if (whole <= limit) {
    return;
  }
  const std::size_t wanted =
      begin + MARGIN < limit ? 0 : std::min(begin - std::min(begin, MARGIN), whole - limit);
  const std::string_view front = firstColumns(parts.before, wanted);
  const std::size_t first = width(front);
  parts.before.erase(0, front.size());
  std::size_t room = limit;
  for (std::string* const part : {&parts.before, &parts.place, &parts.behind}) {
    const std::size_t size = part->size();
    *part = firstColumns(*part, room);
    room = part->size() == size ? room - width(*part) : 0;
  }
  parts.before.insert(0, first == 0 ? "" : CUT);
  parts.behind += first + limit < whole ? CUT : "";
}

void appendGutter(std::string& text, const std::string& number, const ExcerptStyle& style) {
  constexpr std::size_t NUMBER_WIDTH = 5;
  text += style.gutter;
  text.append(NUMBER_WIDTH - std::min(number.size(), NUMBER_WIDTH), ' ').append(number) += " |";
  text.append(style.plain) += ' ';
}

}  // namespace

ExcerptParts excerptParts(const check::Report& report, const check::Diagnostic& finding,
                          std::size_t limit) {
  const std::string_view line = report.source().line(report.placeOf(finding).begin.line);
  // Where the place is known the line is not blank.
  if (!finding.hasSpan &&
      line.substr(0, REACH).find_first_not_of(" \t") == std::string_view::npos) {
    return {};
  }
  const auto start = static_cast<std::size_t>(line.data() - report.source().text().data());
  ExcerptParts parts =
      draw(line, finding.hasSpan ? check::Span{finding.span.begin - start, finding.span.end - start}
                                 : check::Span{0, 0});
  cut(parts, limit);
  if (finding.hasSpan && parts.place.empty()) {  // an empty value is marked by what ends it
    parts.place = firstColumns(parts.behind, 1);
    parts.behind.erase(0, parts.place.size());
  }
  return parts;
}

std::string excerpt(const check::Report& report, const check::Diagnostic& finding,
                    const ExcerptStyle& style) {
  const ExcerptParts parts = excerptParts(report, finding, style.width);
  const std::string line = parts.before + parts.place + parts.behind;
  std::string text;
  if (line.empty()) {
    return text;
  }
  const std::string number = std::to_string(report.placeOf(finding).begin.line);
  appendGutter(text, number, style);
  text.append(line) += '\n';
  if (finding.hasSpan) {
    appendGutter(text, std::string(number.size(), ' '), style);
    text.append(width(parts.before), ' ').append(style.carets) += '^';
    text.append(std::max<std::size_t>(width(parts.place), 1) - 1, '~').append(style.plain) += '\n';
  }
  return text;
}

}  // namespace orvane::nimbrel::tools
