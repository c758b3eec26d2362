#include "tools/output/JsonWriter.h"

#include <charconv>
#include <cmath>
#include <utility>

#include "tools/output/Escape.h"
#include "tools/output/Output.h"

namespace orvane::nimbrel::tools {

JsonWriter::JsonWriter(Layout layout, Write write) : layout_(layout), write_(std::move(write)) {}

JsonWriter::JsonWriter(Layout layout) : JsonWriter(layout, writeOutput) {}

void JsonWriter::key(std::string_view name) {
  beginEntry();
  quote(name);
  pending_ += layout_ == Layout::INDENTED ? ": " : ":";
  afterKey_ = true;
}

void JsonWriter::value(std::string_view text) {
  beginEntry();
  quote(text);
}

void JsonWriter::value(double number) {
  if (!std::isfinite(number)) {
    return literal("null");
  }
  const double size = std::abs(number);
  const bool plain = size == 0 || (size >= 1e-4 && size < 1e15);
  char digits[32];
  char* end = std::to_chars(digits, digits + sizeof(digits) - 2, number,
                            plain ? std::chars_format::fixed : std::chars_format::scientific)
                  .ptr;
  if (plain && std::string_view(digits, static_cast<std::size_t>(end - digits)).find('.') ==
                   std::string_view::npos) {
    *end++ = '.';
    *end++ = '0';
  }
  literal({digits, static_cast<std::size_t>(end - digits)});
}

void JsonWriter::value(float number) {
  char digits[32];
  const char* const end = std::to_chars(digits, digits + sizeof(digits), number).ptr;
  double same = 0;
  std::from_chars(digits, end, same);
  value(same);
}

/// A number, true, false or null, as JSON spells it.
void JsonWriter::literal(std::string_view json) {
  beginEntry();
  pending_ += json;
}

void JsonWriter::finish() {
  pending_ += '\n';
  first_ = true;
  flush();
}

void JsonWriter::flush() {
  write_(pending_);
  pending_.clear();
}

void JsonWriter::begin(char bracket) {
  beginEntry();
  pending_ += bracket;
  ++depth_;
  first_ = true;
}

void JsonWriter::end(char bracket) {
  --depth_;
  if (!first_) {
    breakLine();
  }
  pending_ += bracket;
  first_ = false;
  if (pending_.size() >= PIECE) {
    flush();
  }
}

/// What stands between the value before and this one.
void JsonWriter::beginEntry() {
  if (std::exchange(afterKey_, false) || depth_ == 0) {
    return;
  }
  if (!std::exchange(first_, false)) {
    pending_ += ',';
  }
  breakLine();
}

void JsonWriter::breakLine() {
  if (layout_ == Layout::INDENTED) {
    pending_ += '\n';
    pending_.append(2 * depth_, ' ');
  }
}

void JsonWriter::quote(std::string_view text) {
  pending_ += '"';
  appendEscaped(pending_, text, Encoding::JSON);
  pending_ += '"';
  if (pending_.size() >= PIECE) {
    flush();
  }
}

}  // namespace orvane::nimbrel::tools
