#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "tools/output/JsonSink.h"

namespace orvane::nimbrel::tools {

/// Throws `Failure` with `EXIT_UNUSABLE` unless some record may have a field of this name: a key of
/// the record's JSON object, or a path of them with dots between ("startFile.src", "icons.0.src").
void requireField(const std::string& name);

/// Passes on one field of the record that it is given. The name and `field` must outlive it.
class FieldSelector : public JsonSink {
 public:
  FieldSelector(std::string_view name, JsonSink& field) : next_(name), field_(field) {}

  void beginObject() override;
  void endObject() override;
  void beginArray() override;
  void endArray() override;
  void key(std::string_view name) override;
  void string(std::string_view text) override;
  void literal(std::string_view json) override;

  /// Whether the record has the field, be it null.
  [[nodiscard]] bool isFound() const noexcept { return found_; }
  /// Whether another record may have it: the path goes on where this one has null or nothing.
  [[nodiscard]] bool isOpen() const noexcept { return open_; }

 private:
  std::optional<std::string_view> takeNext();
  bool begin(bool isArray);
  bool beginScalar(bool isNull);
  bool end();

  std::optional<std::string_view> next_;  // the path below the next value, if it leads there
  std::string_view rest_;                 // the path below the container that it has led to
  JsonSink& field_;
  std::size_t depth_ = 0;     // of containers that are open
  std::size_t reached_ = 0;   // the depth of the container that the path has led to
  std::size_t selected_ = 0;  // the depth of the field, while it is a container
  std::size_t entry_ = 0;     // the next one, if the path has led to an array
  bool isArray_ = false;
  bool isEmpty_ = true;
  bool found_ = false;
  bool open_ = false;
};

}  // namespace orvane::nimbrel::tools
