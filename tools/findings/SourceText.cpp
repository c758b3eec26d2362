#include "tools/findings/SourceText.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace orvane::nimbrel::tools {
namespace {

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

/// Beginnings of names of encodings, in lower case.
constexpr std::string_view READABLE[] = {"utf-8",   "utf8",     "us-ascii",    "ascii",
                                         "latin-1", "iso-8859", "windows-125", "iso_8859"};

bool startsWith(std::string_view text, std::string_view start) noexcept {
  return text.substr(0, start.size()) == start;
}

/// The encoding that an XML declaration names, in lower case; empty for none.
std::string declaredEncoding(std::string_view document) {
  if (!startsWith(document, "<?xml")) {
    return {};
  }
  const std::string_view declaration = document.substr(0, document.find("?>"));
  const std::size_t name = declaration.find("encoding");
  const std::size_t begin = name == std::string_view::npos ? std::string_view::npos
                                                           : declaration.find_first_of("'\"", name);
  if (begin == std::string_view::npos) {
    return {};
  }
  std::string encoding(
      declaration.substr(begin + 1, declaration.find(declaration[begin], begin + 1) - begin - 1));
  for (char& c : encoding) {
    c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return encoding;
}

bool isReadable(std::string_view document) {
  const std::string_view head = document.substr(0, 4);
  if (!std::all_of(head.begin(), head.end(), [](char c) { return c > 0 && c < 0x7F; })) {
    return false;  // UTF-16, UTF-32, EBCDIC
  }
  const std::string encoding = declaredEncoding(document);
  return encoding.empty() ||
         std::any_of(std::begin(READABLE), std::end(READABLE),
                     [&](std::string_view known) { return startsWith(encoding, known); });
}

}  // namespace

SourceText::SourceText(std::string_view document) : document_(document) {
  if (startsWith(document_, BYTE_ORDER_MARK)) {
    document_.remove_prefix(BYTE_ORDER_MARK.size());
  }
  if (document_.empty() || !isReadable(document_)) {
    return;
  }
  for (std::size_t start = 0; start != std::string_view::npos;) {
    starts_.push_back(start);
    const std::size_t end = document_.find('\n', start);
    start = end == std::string_view::npos ? end : end + 1;
  }
}

std::string_view SourceText::line(std::uint32_t number) const noexcept {
  if (number == 0 || number > starts_.size()) {
    return {};
  }
  const std::size_t start = starts_[number - 1];
  const std::size_t end = number < starts_.size() ? starts_[number] - 1 : document_.size();
  std::string_view line = document_.substr(start, end - start);
  if (!line.empty() && line.back() == '\r') {
    line.remove_suffix(1);
  }
  return line;
}

}  // namespace orvane::nimbrel::tools
