#include "check/SourceText.h"

#include <algorithm>

#include "check/Decoder.h"
#include "util/Utf8.h"
#include "util/xml/XmlEncoding.h"

namespace orvane::nimbrel::check {
namespace {

constexpr std::size_t MARK_DISTANCE = 256;
constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

}  // namespace

SourceText::SourceText(std::string_view document) {
  const std::optional<std::string> encoding = encodingOf(document);
  if (encoding && !encoding->empty()) {
    text_ = decode(document, *encoding, decoded_, bytes_) ? decoded_ : std::string_view();
  } else {
    // Of an unknown encoding the declaration alone can be read.
    document = document.substr(
        0, encoding ? std::string_view::npos : util::internal::declarationOf(document).end);
    markSize_ = document.substr(0, BYTE_ORDER_MARK.size()) == BYTE_ORDER_MARK ? 3 : 0;
    text_ = encoding || !document.empty() ? document.substr(markSize_) : std::string_view();
  }
  if (text_.data() != nullptr) {
    index();
  }
}

void SourceText::index() {
  lines_.push_back(0);
  for (std::size_t at = text_.find('\n'); at != std::string_view::npos;
       at = text_.find('\n', at + 1)) {
    lines_.push_back(static_cast<std::uint32_t>(at + 1));
  }
  marks_.reserve(text_.size() / MARK_DISTANCE + 1);
  marks_.emplace_back();
  for (std::size_t at = MARK_DISTANCE; at <= text_.size(); at += MARK_DISTANCE) {
    marks_.push_back(countsBefore(at));
  }
}

SourceText::Counts SourceText::countsBefore(std::size_t offset) const noexcept {
  const std::size_t mark = std::min(offset / MARK_DISTANCE, marks_.size() - 1);
  Counts counts = marks_[mark];
  std::uint32_t trails = 0;
  std::uint32_t pairs = 0;  // a character of four bytes takes two units
  const std::string_view rest = text_.substr(mark * MARK_DISTANCE, offset - mark * MARK_DISTANCE);
  for (const char byte : rest) {
    trails += util::internal::isUtf8Trail(byte) ? 1U : 0U;
    pairs += static_cast<unsigned char>(byte) >= 0xF0U ? 1U : 0U;
  }
  counts.codePoints += static_cast<std::uint32_t>(rest.size()) - trails;
  counts.utf16Units += static_cast<std::uint32_t>(rest.size()) - trails + pairs;
  return counts;
}

Position SourceText::positionOf(std::size_t offset) const noexcept {
  if (text_.data() == nullptr) {
    return {};
  }
  offset = std::min(offset, text_.size());
  const auto next = std::upper_bound(lines_.begin(), lines_.end(), offset);
  const Counts here = countsBefore(offset);
  const Counts start = countsBefore(*(next - 1));
  std::size_t byte = markSize_ + offset;
  if (text_.data() == decoded_.data()) {
    byte = bytes_[here.codePoints];
  }
  return {static_cast<std::uint32_t>(next - lines_.begin()), here.codePoints - start.codePoints + 1,
          here.utf16Units - start.utf16Units + 1, byte};
}

std::size_t SourceText::offsetOf(std::uint32_t line, std::uint32_t column) const noexcept {
  if (line == 0 || line > lines_.size()) {
    return text_.size();
  }
  const std::string_view content = this->line(line);
  std::size_t end = 0;
  for (std::uint32_t before = 0; end < content.size(); ++end) {
    if (!util::internal::isUtf8Trail(content[end]) && ++before >= std::max(column, 1U)) {
      break;
    }
  }
  return lines_[line - 1] + end;
}

std::string_view SourceText::line(std::uint32_t number) const noexcept {
  if (number == 0 || number > lines_.size()) {
    return {};
  }
  const std::size_t start = lines_[number - 1];
  const std::size_t end = number < lines_.size() ? lines_[number] - 1 : text_.size();
  std::string_view line = text_.substr(start, end - start);
  if (!line.empty() && line.back() == '\r') {
    line.remove_suffix(1);
  }
  return line;
}

}  // namespace orvane::nimbrel::check
