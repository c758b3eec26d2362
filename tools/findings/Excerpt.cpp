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
constexpr std::string_view CUT = "...";

/// A line as a terminal shows it, with the place in columns.
struct Drawing {
  std::string text;
  std::size_t begin = 0;
  std::size_t end = 0;
};

bool isInCharacter(std::string_view text, std::size_t at) noexcept {
  return at < text.size() && (text[at] & '\xC0') == '\x80';
}

Drawing draw(std::string_view line, check::Span place) {
  std::size_t skipped = place.begin - std::min(place.begin, REACH);
  while (isInCharacter(line, skipped)) {
    ++skipped;
  }
  line = line.substr(skipped, 2 * REACH);
  place = {place.begin - skipped, std::min(place.end - skipped, line.size())};
  Drawing drawing;
  std::size_t column = 0;
  const auto mark = [&](std::size_t at) {
    if (at == place.begin) {
      drawing.begin = column;
    }
    if (at == place.end) {
      drawing.end = column;
    }
  };
  std::size_t at = 0;
  while (at < line.size()) {
    mark(at);
    std::size_t next = at + 1;
    while (isInCharacter(line, next)) {
      ++next;
    }
    const std::string_view character = line.substr(at, next - at);
    if (character.front() > '\x1F' && character.front() < '\x7F') {  // as nearly all are
      drawing.text += character;
      ++column;
    } else {
      const std::string shown =
          character == "\t" ? std::string(TAB - column % TAB, ' ') : escapeUnprintable(character);
      drawing.text += shown;
      column += width(shown);
    }
    at = next;
  }
  mark(at);
  return drawing;
}

/// Cuts a line that is longer than this around the place.
void cut(Drawing& drawing, std::size_t limit) {
  const std::size_t whole = width(drawing.text);
  if (whole <= limit) {
    return;
  }
  const std::size_t wanted =
      drawing.begin + MARGIN < limit
          ? 0
          : std::min(drawing.begin - std::min(drawing.begin, MARGIN), whole - limit);
  const std::string_view front = firstColumns(drawing.text, wanted);
  const std::size_t first = width(front);
  drawing.text.erase(0, front.size());
  drawing.text = firstColumns(drawing.text, limit);
  drawing.begin -= first;
  drawing.end = std::min(drawing.end - first, limit);
  if (first != 0) {
    drawing.text.insert(0, CUT);
    drawing.begin += CUT.size();
    drawing.end += CUT.size();
  }
  if (first + limit < whole) {
    drawing.text += CUT;
  }
}

void appendGutter(std::string& text, const std::string& number, const ExcerptStyle& style) {
  constexpr std::size_t NUMBER_WIDTH = 5;
  text += style.gutter;
  text.append(NUMBER_WIDTH - std::min(number.size(), NUMBER_WIDTH), ' ').append(number) += " |";
  text.append(style.plain) += ' ';
}

/// The line of a finding with its place, cut; no text where there is nothing to see.
Drawing drawingOf(const check::Report& report, const check::Diagnostic& finding,
                  std::size_t limit) {
  const std::string_view line = report.source().line(report.placeOf(finding).begin.line);
  // Where the place is known the line is not blank.
  if (!finding.hasSpan &&
      line.substr(0, REACH).find_first_not_of(" \t") == std::string_view::npos) {
    return {};
  }
  const auto start = static_cast<std::size_t>(line.data() - report.source().text().data());
  const check::Span place =
      finding.hasSpan
          ? check::Span{finding.span.begin - start, std::min(finding.span.end - start, line.size())}
          : check::Span{0, 0};
  Drawing drawing = draw(line, place);
  cut(drawing, limit);
  return drawing;
}

}  // namespace

std::string excerpt(const check::Report& report, const check::Diagnostic& finding,
                    const ExcerptStyle& style) {
  const Drawing drawing = drawingOf(report, finding, style.width);
  std::string text;
  if (drawing.text.empty()) {
    return text;
  }
  const std::string number = std::to_string(report.placeOf(finding).begin.line);
  appendGutter(text, number, style);
  text.append(drawing.text) += '\n';
  if (finding.hasSpan) {
    appendGutter(text, std::string(number.size(), ' '), style);
    text.append(drawing.begin, ' ').append(style.carets) += '^';
    text.append(drawing.end - std::min(drawing.end, drawing.begin + 1), '~').append(style.plain);
    text += '\n';
  }
  return text;
}

ExcerptParts excerptParts(const check::Report& report, const check::Diagnostic& finding) {
  const Drawing drawing = drawingOf(report, finding, ExcerptStyle().width);
  if (!finding.hasSpan) {
    return {drawing.text, {}, {}};
  }
  const std::string_view text = drawing.text;
  const std::string_view before = firstColumns(text, drawing.begin);
  // An empty value is marked by what ends it.
  const std::string_view place = firstColumns(
      text.substr(before.size()), std::max(drawing.end, drawing.begin + 1) - drawing.begin);
  return {std::string(before), std::string(place),
          std::string(text.substr(before.size() + place.size()))};
}

}  // namespace orvane::nimbrel::tools
