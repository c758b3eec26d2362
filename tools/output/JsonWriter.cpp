#include "tools/output/JsonWriter.h"

#include <utility>

#include "tools/output/Escape.h"
#include "tools/output/Output.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::size_t PIECE = 65536;

}  // namespace

JsonWriter::JsonWriter(Layout layout, Write write) : layout_(layout), write_(std::move(write)) {}

JsonWriter::JsonWriter(Layout layout) : JsonWriter(layout, writeOutput) {}

void JsonWriter::key(std::string_view name) {
  beginEntry();
  quote(name);
  pending_ += layout_ == Layout::INDENTED ? ": " : ":";
  afterKey_ = true;
}

void JsonWriter::string(std::string_view text) {
  beginEntry();
  quote(text);
}

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
