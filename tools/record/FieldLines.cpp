#include "tools/record/FieldLines.h"

#include <utility>

#include "tools/output/Escape.h"

namespace orvane::nimbrel::tools {

FieldLines::FieldLines(std::string prefix, JsonWriter::Write write)
    : prefix_(std::move(prefix)),
      write_(std::move(write)),
      json_(JsonWriter::Layout::LINE, [this](std::string_view text) { object_ += text; }) {}

void FieldLines::begin(bool isObject) {
  if (depth_ == 0 && !isObject) {
    valueDepth_ = 1;
  } else {
    isObject ? json_.beginObject() : json_.beginArray();
    // A map whose keys the document chooses has no list.
    isText_ = isText_ || (!isObject && depth_ == valueDepth_ + 1 && key_ == "runs");
  }
  ++depth_;
}

void FieldLines::end(bool isObject) {
  --depth_;
  if (depth_ < valueDepth_) {
    return;
  }
  isObject ? json_.endObject() : json_.endArray();
  if (depth_ == valueDepth_) {
    json_.flush();
    print(std::exchange(isText_, false) ? text_ : object_);
    object_.clear();
  }
}

void FieldLines::key(std::string_view name) {
  json_.key(name);
  if (depth_ == valueDepth_ + 1) {
    key_ = name;
  }
}

void FieldLines::string(std::string_view text) {
  if (depth_ == valueDepth_) {
    print(escape(text));
    return;
  }
  json_.string(text);
  if (depth_ == valueDepth_ + 1 && key_ == "text") {
    text_ = escape(text);
  }
}

void FieldLines::literal(std::string_view json) {
  if (depth_ > valueDepth_) {
    json_.literal(json);
  } else if (depth_ != 0 || json != "null") {
    print(json);
  }
}

void FieldLines::print(std::string_view line) {
  write_(prefix_ + std::string(line) + '\n');
}

}  // namespace orvane::nimbrel::tools
