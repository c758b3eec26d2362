#include "tools/record/FieldSelector.h"

#include <limits>
#include <utility>

#include "tools/Failure.h"
#include "tools/output/Escape.h"
#include "tools/output/JsonWriter.h"
#include "tools/record/RecordJson.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::size_t NOWHERE = std::numeric_limits<std::size_t>::max();

/// The path below the member called `name`; none when it does not lead there. Names from a document
/// may have dots themselves.
std::optional<std::string_view> below(std::string_view path, std::string_view name) {
  if (name.empty() || path.substr(0, name.size()) != name) {
    return std::nullopt;
  }
  path.remove_prefix(name.size());
  if (path.empty()) {
    return path;
  }
  return path.front() == '.' ? std::optional(path.substr(1)) : std::nullopt;
}

}  // namespace

/// The path below the value that comes now; none when it does not lead there.
std::optional<std::string_view> FieldSelector::takeNext() {
  if (isArray_ && depth_ == reached_) {
    return below(rest_, std::to_string(entry_++));
  }
  return std::exchange(next_, std::nullopt);
}

/// Whether the container belongs to the field.
bool FieldSelector::begin(bool isArray) {
  const std::optional<std::string_view> next = selected_ != 0 ? std::nullopt : takeNext();
  ++depth_;
  if (selected_ != 0) {
    return true;
  }
  if (!next || found_) {
    return false;
  }
  if (next->empty()) {
    found_ = true;
    selected_ = depth_;
    return true;
  }
  reached_ = depth_;
  rest_ = *next;
  isArray_ = isArray;
  isEmpty_ = true;
  entry_ = 0;
  open_ = isArray;
  return false;
}

/// Whether the value belongs to the field.
bool FieldSelector::beginScalar(bool isNull) {
  if (selected_ != 0) {
    return true;
  }
  const std::optional<std::string_view> next = takeNext();
  if (!next || found_) {
    return false;
  }
  found_ = next->empty();
  open_ = open_ || (isNull && !found_);
  return found_;
}

/// Whether the container belongs to the field.
bool FieldSelector::end() {
  const bool isInField = selected_ != 0;
  if (selected_ == depth_) {
    selected_ = 0;
  }
  if (reached_ == depth_) {
    open_ = open_ || isEmpty_;
    reached_ = NOWHERE;
  }
  --depth_;
  return isInField;
}

void FieldSelector::beginObject() {
  if (begin(false)) {
    field_.beginObject();
  }
}

void FieldSelector::endObject() {
  if (end()) {
    field_.endObject();
  }
}

void FieldSelector::beginArray() {
  if (begin(true)) {
    field_.beginArray();
  }
}

void FieldSelector::endArray() {
  if (end()) {
    field_.endArray();
  }
}

void FieldSelector::key(std::string_view name) {
  if (selected_ != 0) {
    field_.key(name);
  } else if (depth_ == reached_) {
    isEmpty_ = false;
    next_ = below(rest_, name);
  }
}

void FieldSelector::string(std::string_view text) {
  if (beginScalar(false)) {
    field_.string(text);
  }
}

void FieldSelector::literal(std::string_view json) {
  if (beginScalar(json == "null")) {
    field_.literal(json);
  }
}

void requireField(const std::string& name) {
  config::BasicConfig empty;
  JsonWriter nowhere(JsonWriter::Layout::LINE, [](std::string_view /*text*/) {});
  FieldSelector selector(name, nowhere);
  recordToJson(selector, empty, "");
  if (name.empty() || (!selector.isFound() && !selector.isOpen())) {
    throw Failure(EXIT_UNUSABLE, "nimbrel-config: there is no field \"" + escape(name) +
                                     "\"; the keys of --format json are fields");
  }
}

}  // namespace orvane::nimbrel::tools
